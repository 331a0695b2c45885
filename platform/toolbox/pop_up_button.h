// The widget behind pop-ups.
#pragma once

#include <QComboBox>
#include <optional>

/// A pop-up that tells its menu when it opens. One with the property "actsAtOnce" has items that do more than set a
/// value: what would step through them while the menu is closed opens it, and the wheel does nothing.
class PopUpButton final : public QComboBox {
public:
    explicit PopUpButton(QWidget* parent = nullptr) : QComboBox(parent) {}

    void showPopup() override;

    // How wide it is, before it has a menu. Qt's policies of these names make the list of the items at once, which most
    // pop-ups never show.

    /// As its minimum contents length says, with room for an icon, whatever its items are.
    void holdWidth() { width_ = Width::held; }
    /// As its widest item, whenever they change.
    void fitItems() { width_ = Width::fitting; }

    void setModel(QAbstractItemModel* model) override;
    QSize sizeHint() const override { return width_ == Width::asQtHasIt ? QComboBox::sizeHint() : ownSize(); }
    QSize minimumSizeHint() const override {
        return width_ == Width::asQtHasIt ? QComboBox::minimumSizeHint() : ownSize();
    }

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    bool actsAtOnce() const { return property("actsAtOnce").toBool(); }
    QSize ownSize() const;
    QSize contentsSize() const;
    void forgetContents();

    enum class Width : unsigned char { asQtHasIt, held, fitting };
    Width width_ = Width::asQtHasIt;
    mutable std::optional<QSize> contents_;  // layouts ask often
};
