// The widget behind user panes and custom views.
#pragma once

#include "platform/toolbox/user_input.h"

#include <QWidget>

class ViewWidget final : public QWidget {
public:
    explicit ViewWidget(QWidget* parent = nullptr) : QWidget(parent) {}

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// A click there is a hit: says the hit test or, where nobody makes one, that there is a command to send.
    bool isHot(QPointF place) const;

    bool pressed_ = false;
    WheelNotches wheel_;
};
