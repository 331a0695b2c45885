// A document whose pages are drawn: it stays open, whatever becomes of its file's name.
#pragma once

#include "platform/files/descriptor.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class DrawnDocument {
public:
    /// The PDF at a path. Null, with the reason, when it cannot be read. The password is in memory only.
    static std::shared_ptr<const DrawnDocument> open(const std::string& path, const std::string& password,
                                                     std::string* reason);
    /// A PDF of our own making. Null, with the reason, when there is no memory for it.
    static std::shared_ptr<const DrawnDocument> keep(std::string_view pdf, std::string* reason);

    /// No other document of this process has the number.
    [[nodiscard]] std::uint32_t number() const { return number_; }
    [[nodiscard]] int descriptor() const { return file_.get(); }
    [[nodiscard]] const std::string& password() const { return password_; }

private:
    DrawnDocument(Descriptor file, std::string password);

    std::uint32_t number_;
    Descriptor file_;
    std::string password_;
};
