// What was prepared and is not printed yet, by the numbers under which callers ask for it.
#pragma once

#include "platform/files/temporary_files.h"

#include <QString>

#include <chrono>
#include <map>
#include <memory>
#include <optional>

class KeptSettings {
public:
    using Clock = std::chrono::steady_clock;

    explicit KeptSettings(std::chrono::seconds patience) : patience_(patience) {}

    /// Keeps a request's folder for a program (by the name that the desktop has for it) and for whom it called through
    /// (a name on the bus). A number that nobody can guess.
    quint32 keep(std::unique_ptr<WorkFolder> folder, const QString& program, const QString& caller);
    /// The folder, once, if it was kept for them and not too long ago; else null.
    std::unique_ptr<WorkFolder> take(quint32 token, const QString& program, const QString& caller);
    /// Forgets what was kept for a caller that has gone.
    void forget(const QString& caller);
    /// Forgets what is too old. When that will be so of something next; nothing when nothing is kept.
    std::optional<std::chrono::milliseconds> expire();
    [[nodiscard]] bool isEmpty() const { return kept_.empty(); }

private:
    struct Kept {
        std::unique_ptr<WorkFolder> folder;
        QString program;
        QString caller;
        Clock::time_point end;
    };
    std::chrono::seconds patience_;
    std::map<quint32, Kept> kept_;
};
