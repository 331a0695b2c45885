// The form that a cover sheet is: rows of a label and a value, one below the other, in sections between rules.
#pragma once

#include "platform/drawing/PDFPage.h"

#include <optional>
#include <string>
#include <vector>

/// Legible in the coarse mode of a fax: 98 lines an inch.
inline constexpr double kTextSize = 12;

class CoverSheetForm {
public:
    /// A row. Each block keeps to its column.
    struct Row {
        TextBlock label;
        TextBlock value;
        std::optional<TextBlock> aside;  // beside the value, at the other end

        [[nodiscard]] double height() const;
    };
    using Section = std::vector<Row>;

    CoverSheetForm(const std::string& title, double width, double height, bool fromRightToLeft);

    /// Makes the label column as wide as the widest of these needs, within reason. To be called before any row is made.
    void fitLabels(const std::vector<std::string>& labels);

    /// A row whose value has at most so many lines, or any number of them.
    [[nodiscard]] Row makeRow(const std::string& label, const std::string& value, int mostLines) const;
    [[nodiscard]] Row makeRow(const std::string& label, const std::string& value, const std::string& aside,
                              int mostLines) const;
    /// The label of a text, and a text, over the full width of the form.
    [[nodiscard]] TextBlock makeHeading(const std::string& label) const;
    [[nodiscard]] TextBlock makeText(const std::string& text, double size) const;

    /// Title at one side and picture at the other, and the rule below them.
    void drawHead(const std::string& title, const Picture* picture);
    /// A section, and the rule below it unless it is the last one. Nothing for one without rows.
    void draw(const Section& section, bool isLast);
    void draw(const TextBlock& text);

    /// The room that is left, and what a section takes up of it.
    [[nodiscard]] double room() const;
    [[nodiscard]] static double heightOf(const Section& section);

    [[nodiscard]] PDFPage& page() { return page_; }
    [[nodiscard]] double pageWidth() const { return width_; }
    [[nodiscard]] double pageHeight() const { return height_; }

private:
    [[nodiscard]] double formWidth() const;
    [[nodiscard]] TextBlock makeBlock(const std::string& text, const TextStyle& style, double width,
                                      int mostLines) const;
    /// Draws a block of that width, `indent` away from the side where reading starts.
    void place(const TextBlock& block, double indent, double width, double top);

    PDFPage page_;
    double width_;
    double height_;
    bool fromRightToLeft_;
    double labelWidth_;
    double top_;  // of what comes next
};
