// The lines of a TextBlock, in the units of units.h.
#pragma once

#include "platform/drawing/PDFPage.h"

#include <QFont>
#include <QPainter>
#include <QString>
#include <QTextLayout>

#include <memory>
#include <vector>

struct TextBlock::Lines {
    Lines(const QString& text, const QFont& usedFont, double usedWidth, TextSide usedSide);

    void draw(QPainter* painter, QPointF place) const;
    void keep(int count);
    /// Keeps the first lines, with an ellipsis at the end of the last. Nothing happens to a shorter text.
    void shortenTo(int count);

    QFont font;
    double width;
    TextSide side;
    QString text;
    std::vector<std::unique_ptr<QTextLayout>> paragraphs;
    struct Line {
        QTextLine set;
        qsizetype start;  // in the text
    };
    std::vector<Line> lines;

private:
    void addParagraph(qsizetype start, qsizetype length);
};
