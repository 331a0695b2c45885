#include "watermark/editor/font_menu.h"

#include "watermark/editor/editor_texts.h"

void FontMenu::setNames(const QStringList& names) {
    if (names != names_) {
        beginResetModel();
        names_ = names;
        endResetModel();
    }
}

int FontMenu::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(names_.size());
}

QVariant FontMenu::data(const QModelIndex& index, int role) const {
    const QString name = names_.value(index.row());
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return name;
        case Qt::ToolTipRole:
        case Qt::AccessibleDescriptionRole: {
            const FontRefusal refusal = refusal_(name);
            return refusal != FontRefusal::none ? EditorText(RefusalKey(refusal)).replace(QStringLiteral("%2"), name)
                                                : QVariant();
        }
        default:
            return {};
    }
}

Qt::ItemFlags FontMenu::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractListModel::flags(index);
    const bool canChoose = index.isValid() && refusal_(names_.value(index.row())) == FontRefusal::none;
    return canChoose ? flags : flags & ~(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
}
