#include "platform/toolbox/label_name.h"

namespace {

void dropBlanksAtEnd(QString* text) {
    while (!text->isEmpty() && text->back().isSpace()) {
        text->chop(1);
    }
}

}  // namespace

QString nameOfLabel(const QString& label) {
    QString name;
    for (qsizetype i = 0; i < label.size(); ++i) {
        if (label[i] == u'&' && i + 1 < label.size()) {
            ++i;
            // East Asian texts have the letter behind them, in brackets.
            if (name.endsWith(u'(') && i + 1 < label.size() && label[i + 1] == u')') {
                name.chop(1);
                dropBlanksAtEnd(&name);
                ++i;
                continue;
            }
        }
        name += label[i];
    }
    dropBlanksAtEnd(&name);
    if (name.endsWith(u':') || name.endsWith(u'\uFF1A')) {  // as wide as an East Asian character
        name.chop(1);
        dropBlanksAtEnd(&name);
    }
    return name;
}
