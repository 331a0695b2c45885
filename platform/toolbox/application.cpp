// The start of the toolbox.

#include "platform/foundation/terminal_text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/help_key.h"
#include "platform/toolbox/objects.h"
#include "platform/toolbox/own_style.h"
#include "platform/toolbox/plain_labels.h"
#include "platform/toolbox/return_key.h"
#include "platform/toolbox/wheel.h"

#include <QApplication>
#include <QBuffer>
#include <QFontDatabase>
#include <QImageReader>
#include <QPalette>
#include <QStyleHints>
#include <cstdio>
#include <thread>

namespace {

/// What the first window waits for and no window is needed for: the list of the installed fonts, and the plug-ins that
/// read pictures, all of which are asked for the first one, whatever its kind. It runs beside the main thread, which
/// reads what that window shows.
void openFontsAndPictures() {
    QFontDatabase::hasFamily(QString());
    QByteArray nothing;
    QBuffer buffer(&nothing);
    QImageReader(&buffer).canRead();
}

std::jthread ahead;  // waited for at the end of the process, if nobody has

bool hasDisplay() {
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

/// The dark colours of a program that is told to be dark where the desktop does not say so, such as offscreen.
QPalette darkPalette() {
    const QColor window(0x2B, 0x2D, 0x30);
    const QColor base(0x1E, 0x1F, 0x22);
    const QColor text(0xE6, 0xE6, 0xE6);
    const QColor dimmed(0x80, 0x82, 0x86);
    QPalette palette(window);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Button, QColor(0x3A, 0x3D, 0x41));
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::Highlight, QColor(0x2F, 0x6F, 0xB5));
    palette.setColor(QPalette::Link, QColor(0x6C, 0xA9, 0xEA));
    palette.setColor(QPalette::PlaceholderText, dimmed);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                            QPalette::HighlightedText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, dimmed);
    }
    return palette;
}

/// Qt's hints to programmers (a platform that cannot raise windows, the file that the nib loader reports as well) are
/// not for people who read standard error. QT_LOGGING_RULES brings them back.
void tellOfFaultsOnly(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg) {
        printLine(stderr, message.toStdString());
    }
}

}  // namespace

ToolboxState& toolboxState() {
    static ToolboxState state;
    return state;
}

OSStatus ToolboxInitialize(int* argc, char** argv, Boolean scripted) {
    if (qApp != nullptr) {
        return paramErr;
    }
    toolboxState().scripted = scripted;
    if (!qEnvironmentVariableIsSet("QT_LOGGING_RULES")) {
        qInstallMessageHandler(tellOfFaultsOnly);
    }
    if (scripted && !hasDisplay() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // The one application object lives as long as the process; the widgets of a bundle may outlive any static order.
    static QApplication* application = new QApplication(*argc, argv);
    application->setQuitOnLastWindowClosed(false);
    restrictWheelToFocus(application);
    letReturnPressToolButtons(application);
    letHelpKeyReachHelp(application);
    keepLabelsPlain(application);
    improveOwnStyle(application);
    ahead = std::jthread(openFontsAndPictures);
    if (qgetenv("TAVRO_COLOR_SCHEME") == "dark") {
        QApplication::setPalette(darkPalette());
    }
    return noErr;
}

// Qt 6.8 deletes what waits for it at the end of the process, behind the static objects that it would need.
void ToolboxTerminate() {
    if (ahead.joinable()) {
        ahead.join();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
