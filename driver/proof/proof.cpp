#include "driver/proof/proof.h"

#include "driver/proof/interpreter.h"
#include "driver/proof/job_file.h"
#include "platform/foundation/message.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

std::string ProofSheet::value(const std::string& key) const {
    const auto known = device.find(key);
    return known == device.end() ? std::string() : known->second;
}

std::string Proof::setting(const std::string& name) const {
    const std::string start = "SET " + name + "=";
    const auto command =
        std::ranges::find_if(commands, [&](const std::string& line) { return line.starts_with(start); });
    return command == commands.end() ? std::string() : command->substr(start.size());
}

std::vector<std::string> Proof::instruction(const std::string& name) const {
    std::vector<std::string> values;
    for (const auto& [known, value] : instructions) {
        if (known == name) {
            values.push_back(value);
        }
    }
    return values;
}

std::optional<Proof> readProof(const std::string& path, std::string* reason, int patience) {
    std::error_code error;
    if (std::filesystem::exists(path, error) && !std::filesystem::is_regular_file(path, error)) {
        *reason = messageText("is no file");  // a device may have no end
        return std::nullopt;
    }
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    if (!file) {
        *reason = systemMessage(errno);
        return std::nullopt;
    }
    auto job = takeApart(content.str());
    if (!job) {
        *reason = messageText("is no job for a PostScript printer");
        return std::nullopt;
    }
    const auto events = interpret(job->postScript, patience, reason);
    if (!events) {
        return std::nullopt;
    }
    Proof proof;
    proof.commands = std::move(job->commands);
    proof.instructions = std::move(job->instructions);
    printEvents(*events, &proof);
    return proof;
}
