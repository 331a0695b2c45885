// The widget behind little arrows: two buttons, one above the other, that step a value. It shows no text; a field
// beside it does.
#pragma once

#include "platform/toolbox/Controls.h"

#include <QAbstractSlider>
#include <QBasicTimer>

/// Value, range and step are QAbstractSlider's. It takes no focus: a click on it leaves the focus in its field, and the
/// field's own keys step it.
class LittleArrows final : public QAbstractSlider {
public:
    explicit LittleArrows(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// The half that a part covers.
    QRect partRect(ControlPartCode part) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    ControlPartCode partAt(QPoint place) const;
    void step();
    void release();

    ControlPartCode pressed_ = 0;  // where the mouse went down
    bool inside_ = false;          // and whether it is still there
    QBasicTimer repeat_;
};
