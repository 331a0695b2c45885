#include "host/proof/print_proof.h"

#include "host/proof/proof_words.h"
#include "host/script/text.h"
#include "platform/foundation/terminal_text.h"

#include <cstdio>

Failure printProof(const std::string& path, const Printer& printer, CFBundleRef texts) {
    std::string reason;
    const auto proof = readProof(path, &reason);
    if (!proof) {
        return unusable(path, reason);
    }
    for (const std::string& line : proofWords(reportOf(*proof, printer, texts), texts)) {
        printLine(stdout, readable(line));
    }
    return proof->errors.empty() ? Failure{ExitStatus::success, {}} : unusable(path, proof->errors.front());
}
