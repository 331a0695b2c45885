// The widget behind pop-ups.
#pragma once

#include <QComboBox>

/// A pop-up that tells its menu when it opens. One with the property "actsAtOnce" has items that do more than set a
/// value: what would step through them while the menu is closed opens it, and the wheel does nothing.
class PopUpButton final : public QComboBox {
public:
    explicit PopUpButton(QWidget* parent = nullptr) : QComboBox(parent) {}

    void showPopup() override;

    /// Makes it as wide as its minimum contents length says, with room for an icon, whatever its items are. Qt's policy
    /// of that name makes the list of the items at once, which most pop-ups never show.
    void holdWidth() { holdsWidth_ = true; }
    QSize sizeHint() const override { return holdsWidth_ ? heldSize() : QComboBox::sizeHint(); }
    QSize minimumSizeHint() const override { return holdsWidth_ ? heldSize() : QComboBox::minimumSizeHint(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    bool actsAtOnce() const { return property("actsAtOnce").toBool(); }
    QSize heldSize() const;

    bool holdsWidth_ = false;
};
