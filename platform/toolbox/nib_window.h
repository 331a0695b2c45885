// The widget behind every window of a nib. Private to this folder.
#pragma once

#include <QDialog>

/// A dialog whose title bar and Escape key do not close it but tell its window object that the user wants that.
class NibWindow final : public QDialog {
public:
    explicit NibWindow(QWidget* parent = nullptr) : QDialog(parent) {}

protected:
    void reject() override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool firstFrame_ = false;  // shown, but not painted yet
};
