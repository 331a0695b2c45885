#include "host/portal/service/kept_settings.h"

#include <QRandomGenerator>

#include <algorithm>

quint32 KeptSettings::keep(std::unique_ptr<WorkFolder> folder, const QString& program, const QString& caller) {
    quint32 token = 0;
    while (token == 0 || kept_.contains(token)) {
        token = QRandomGenerator::system()->generate();
    }
    kept_[token] = {std::move(folder), program, caller, Clock::now() + patience_};
    return token;
}

std::unique_ptr<WorkFolder> KeptSettings::take(quint32 token, const QString& program, const QString& caller) {
    expire();
    const auto found = kept_.find(token);
    if (found == kept_.end() || found->second.program != program || found->second.caller != caller) {
        return nullptr;
    }
    auto folder = std::move(found->second.folder);
    kept_.erase(found);
    return folder;
}

void KeptSettings::forget(const QString& caller) {
    std::erase_if(kept_, [&](const auto& one) { return one.second.caller == caller; });
}

std::optional<std::chrono::milliseconds> KeptSettings::expire() {
    const auto now = Clock::now();
    std::erase_if(kept_, [&](const auto& one) { return one.second.end <= now; });
    if (kept_.empty()) {
        return std::nullopt;
    }
    const auto next = std::ranges::min_element(kept_, {}, [](const auto& one) { return one.second.end; });
    return std::chrono::ceil<std::chrono::milliseconds>(next->second.end - now);
}
