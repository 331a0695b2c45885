#include "platform/toolbox/label_name.h"

#include <QRegularExpression>

QString nameOfLabel(QString label) {
    // East Asian texts have the letter behind them, in brackets, and a colon as wide as their characters.
    static const QRegularExpression kUnspoken(QStringLiteral(R"(\s*\(&.\)|\s*[:：]\s*$)"),
                                              QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression kLetter(QStringLiteral("&(.)"));
    return label.remove(kUnspoken).replace(kLetter, QStringLiteral("\\1"));
}
