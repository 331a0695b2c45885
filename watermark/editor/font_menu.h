// Names of font families or of styles in a pop-up.
#pragma once

#include "watermark/type42/font_refusal.h"

#include <QAbstractListModel>
#include <QStringList>
#include <functional>

/// What cannot be embedded can be read, with the reason in its tooltip, but not chosen. Whether something can is asked
/// when its row is shown first: it means to open a file.
class FontMenu : public QAbstractListModel {
public:
    using Refusal = std::function<FontRefusal(const QString& name)>;

    FontMenu(Refusal refusal, QObject* parent) : QAbstractListModel(parent), refusal_(std::move(refusal)) {}

    void setNames(const QStringList& names);

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    Refusal refusal_;
    QStringList names_;
};
