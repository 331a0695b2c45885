#include "driver/proof/proof.h"

#include "driver/proof/interpreter.h"
#include "driver/proof/job_file.h"
#include "platform/foundation/message.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>

namespace {

/// What is asked of the finisher, not of a sheet.
constexpr std::array<std::string_view, 12> kFinishing{"Staple",  "StapleDetails",  "Fold", "FoldDetails",
                                                      "Punch",   "PunchDetails",   "Bind", "BindDetails",
                                                      "Booklet", "BookletDetails", "Jog",  "OutputType"};

bool isFinishing(const std::string& key) {
    return std::ranges::find(kFinishing, key) != kFinishing.end();
}

/// What a null or false wish leaves undone.
bool isNothing(const std::string& value) {
    return value.empty() || value == "0" || value == "false" || value == "--nostringval--" || value == "null";
}

/// The way of paper through a printer: each page comes onto the next side; a sheet that cannot take it is put out.
class PaperPath {
public:
    explicit PaperPath(Proof* proof) : proof_(*proof) {}

    void take(const DeviceEvent& event) {
        switch (event.kind) {
            case DeviceEvent::Kind::set:
                set(event.key, event.value);
                break;
            case DeviceEvent::Kind::page:
                print(event);
                break;
            case DeviceEvent::Kind::error:
                proof_.errors.push_back(event.value);
                break;
        }
    }

private:
    void set(const std::string& key, const std::string& value) {
        if (key == "NumCopies") {
            proof_.copies = std::max(std::atoi(value.c_str()), 1);
        } else if (key == "Collate") {
            proof_.isCollated = value != "false";
        } else if (isFinishing(key)) {
            proof_.finishing[key] = value;
        } else if (isNothing(value) && !(key == "MediaPosition" && value == "0")) {  // which is the first tray
            device_.erase(key);
        } else {
            device_[key] = value;
        }
    }

    void print(const DeviceEvent& page) {
        ProofSide side;
        side.isBlank = page.right <= page.left;
        side.left = page.left;
        side.bottom = page.bottom;
        side.right = page.right;
        side.top = page.top;
        side.text = page.text;
        side.tones = page.tones;
        if (isWaiting_ && proof_.sheets.back().device == device_) {
            proof_.sheets.back().side2 = side;
            isWaiting_ = false;
            return;
        }
        ProofSheet sheet;
        sheet.device = device_;
        sheet.isTwoSided = device_.contains("Duplex");
        sheet.isTumbled = sheet.isTwoSided && device_.contains("Tumble");
        sheet.side1 = side;
        proof_.sheets.push_back(std::move(sheet));
        isWaiting_ = proof_.sheets.back().isTwoSided;
    }

    Proof& proof_;
    std::map<std::string, std::string> device_;
    bool isWaiting_ = false;  // the last sheet, for its second side
};

}  // namespace

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
    PaperPath way(&proof);
    std::ranges::for_each(*events, [&way](const DeviceEvent& event) { way.take(event); });
    return proof;
}
