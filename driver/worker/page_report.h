// What the program that looks at a document says of it, and what another one believes of that.
//
// Lines of text: "COUNT WIDTH HEIGHT" for pages of one size that follow each other, in points, then "whole" or
// "repaired"; or one line "refused REASON", a message that is packed. Without its last line a report is none.
#pragma once

#include "driver/pages/document.h"

#include <cstdio>
#include <string>
#include <string_view>

/// Writes the report of pages, or of the reason that there are none. False when it is not taken.
bool writePageReport(const std::optional<DocumentPages>& pages, std::string_view reason, std::FILE* output);

/// Reads a report as it comes. It is a stranger's: what is read a document's pages may look at.
class PageReportReader {
public:
    /// Takes the next bytes. False for what is no report; the rest of it is of no use.
    bool add(std::string_view bytes);

    [[nodiscard]] bool isWhole() const { return state_ == State::ended; }
    /// Of a whole report; nothing, with the reason, for a document that was refused.
    [[nodiscard]] std::optional<DocumentPages> take(std::string* reason);

private:
    enum class State { pages, ended, failed };

    bool endLine();
    bool addPages();

    State state_ = State::pages;
    std::string line_;
    DocumentPages pages_;
    std::string refusal_;
};
