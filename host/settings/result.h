// A value, or why there is none.
#pragma once

#include "host/settings/exit_status.h"

#include <optional>
#include <string>
#include <utility>
#include <variant>

/// What the program would end with: its exit status and one line that names the file and the reason.
struct Failure {
    ExitStatus status;
    std::string line;
};

inline Failure unusable(const std::string& file, const std::string& reason) {
    return {ExitStatus::unusableInput, file + ": " + reason};
}

template <typename T>
class [[nodiscard]] Result {
public:
    Result(T value) : content_(std::move(value)) {}            // NOLINT(google-explicit-constructor)
    Result(Failure failure) : content_(std::move(failure)) {}  // NOLINT(google-explicit-constructor)

    explicit operator bool() const { return std::holds_alternative<T>(content_); }
    T& operator*() { return std::get<T>(content_); }
    T* operator->() { return &std::get<T>(content_); }
    const Failure& failure() const { return std::get<Failure>(content_); }

private:
    std::variant<T, Failure> content_;
};
