// A button that shows a color and asks for another one, with how much of the page shows through it.
#pragma once

#include <QPushButton>
#include <functional>

class ColorButton : public QPushButton {
public:
    explicit ColorButton(QWidget* parent);

    void setColor(const QColor& color);

    /// Called with the color that the user chose.
    std::function<void(const QColor&)> chosen;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void ask();

    QColor color_;
};
