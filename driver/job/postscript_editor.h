// What a job's PostScript gets on its way from the filters: instructions in front, and the printer's own code where the
// paper changes.
#pragma once

#include "platform/files/byte_sink.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Code for the beginnings of pages. Most pages go on as the one before, and have none.
class PageCodes {
public:
    /// The code of the next page; empty for none.
    void add(const std::string& code);
    [[nodiscard]] std::size_t count() const { return numbers_.size(); }
    /// Of a page from 0; empty for those that were not added.
    [[nodiscard]] const std::string& operator[](std::size_t page) const;

private:
    std::vector<std::string> codes_{std::string()};
    std::vector<std::uint32_t> numbers_;
};

/// Edits a document that follows the Document Structuring Conventions while it passes by, in pieces of any length:
///   - what the filter asks of the page device for the whole job goes, as the job says it itself;
///   - the header comes behind the comments, between those and the prolog;
///   - each page's code comes to the end of its setup.
class PostScriptEditor : public ByteSink {
public:
    /// Told how many pages have begun; false ends the work.
    using Progress = std::function<bool(std::size_t pages)>;

    PostScriptEditor(std::string header, const PageCodes& codes, Progress progress, ByteSink& next);

    /// False once the next one has taken no more, or the work was ended.
    bool write(std::string_view bytes) override;
    /// At the end. False as well when the document had not as many pages as there are codes, or no header comments.
    bool finish();

private:
    bool line(std::string_view line);
    bool put(std::string_view text);

    enum class Place { comments, prolog, setup, pages, pageSetup };

    std::string header_;
    const PageCodes& codes_;
    Progress progress_;
    ByteSink& next_;
    std::string part_;  // of a line that is not whole yet
    Place place_ = Place::comments;
    std::size_t page_ = 0;  // that have begun
    bool isTaken_ = true;
};
