// The widget behind pop-ups.
#pragma once

#include <QComboBox>

/// A pop-up that tells its menu when it opens. One with the property "actsAtOnce" has items that do more than set a
/// value: what would step through them while the menu is closed opens it, and the wheel does nothing.
class PopUpButton final : public QComboBox {
public:
    explicit PopUpButton(QWidget* parent = nullptr) : QComboBox(parent) {}

    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    bool actsAtOnce() const { return property("actsAtOnce").toBool(); }
};
