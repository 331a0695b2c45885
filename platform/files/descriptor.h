// An open descriptor that closes itself.
#pragma once

#include <utility>

#include <unistd.h>

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() {
        if (number_ >= 0) {
            close(number_);
        }
    }

    /// Hands it over to a caller that closes it.
    [[nodiscard]] int release() { return std::exchange(number_, -1); }
    explicit operator bool() const { return number_ >= 0; }
    [[nodiscard]] int get() const { return number_; }

private:
    int number_ = -1;
};
