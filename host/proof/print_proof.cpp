#include "host/proof/print_proof.h"

#include "host/proof/proof_words.h"

#include <cstdio>

Failure printProof(const std::string& path, const Printer& printer, CFBundleRef texts) {
    std::string reason;
    const auto proof = readProof(path, &reason);
    if (!proof) {
        return unusable(path, reason);
    }
    for (const std::string& line : proofWords(*proof, printer, texts)) {
        std::printf("%s\n", line.c_str());
    }
    return proof->errors.empty() ? Failure{ExitStatus::success, {}} : unusable(path, proof->errors.front());
}
