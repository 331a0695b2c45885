// The start of the toolbox.

#include "platform/fonts/font_faces.h"
#include "platform/foundation/terminal_text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/help_key.h"
#include "platform/toolbox/language_font.h"
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
#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <thread>
#include <vector>

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

// Waited for at the end of the process, if nobody has.
std::optional<FontsAhead> fontsAhead;
std::jthread ahead;

bool hasDisplay() {
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

struct Scheme {
    QByteArray name;
    QRgb window;
    QRgb button;
    QRgb base;
    QRgb text;
    QRgb dimmed;
    QRgb highlight;
    QRgb link;
};

/// The colors of a program that is told to have them where the desktop does not say so, such as offscreen.
std::optional<QPalette> paletteOf(const QByteArray& scheme) {
    static const std::array<Scheme, 3> kSchemes{
        Scheme{"dark", 0x2B2D30, 0x3A3D41, 0x1E1F22, 0xE6E6E6, 0x808286, 0x2F6FB5, 0x6CA9EA},
        Scheme{"high-contrast", 0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0x000000, 0x6E6E6E, 0x0000B0, 0x0000B0},
        Scheme{"high-contrast-dark", 0x000000, 0x000000, 0x000000, 0xFFFFFF, 0xA0A0A0, 0x1A5FB4, 0x8CC8FF}};
    const auto found = std::ranges::find(kSchemes, scheme, &Scheme::name);
    if (found == kSchemes.end()) {
        return std::nullopt;
    }
    QPalette palette{QColor(found->window)};
    palette.setColor(QPalette::Window, QColor(found->window));
    palette.setColor(QPalette::Button, QColor(found->button));
    palette.setColor(QPalette::Base, QColor(found->base));
    palette.setColor(QPalette::AlternateBase, QColor(found->window));
    palette.setColor(QPalette::ToolTipBase, QColor(found->base));
    palette.setColor(QPalette::Highlight, QColor(found->highlight));
    palette.setColor(QPalette::Link, QColor(found->link));
    palette.setColor(QPalette::PlaceholderText, QColor(found->dimmed));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, QColor(found->text));
        palette.setColor(QPalette::Disabled, role, QColor(found->dimmed));
    }
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, QColor(found->dimmed));
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
    const std::string language = languageOfOtherLetters();
    if (!scripted) {  // a script has time, and a test around it may change the environment, which the threads read
        fontsAhead.emplace(kFamilyWithoutDesktop, language);
    }
    // Qt keeps them. No variable is set: others may read the environment by now, in threads of theirs.
    static std::vector<char*> arguments(argv, argv + *argc);
    if (scripted && !hasDisplay() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        static std::array<std::string, 2> words{"-platform", "offscreen"};
        arguments.insert(arguments.end(), {words[0].data(), words[1].data()});
    }
    static int count = static_cast<int>(arguments.size());
    // The one application object lives as long as the process; the widgets of a bundle may outlive any static order.
    static QApplication* application = new QApplication(count, arguments.data());
    application->setQuitOnLastWindowClosed(false);
    restrictWheelToFocus(application);
    letReturnPressToolButtons(application);
    letHelpKeyReachHelp(application);
    keepLabelsPlain(application);
    improveOwnStyle(application);
    useFontOf(language);
    if (!scripted) {
        ahead = std::jthread(openFontsAndPictures);
    }
    if (const auto palette = paletteOf(qgetenv("TAVRO_COLOR_SCHEME"))) {
        QApplication::setPalette(*palette);
    }
    return noErr;
}

// Qt 6.8 deletes what waits for it at the end of the process, behind the static objects that it would need.
void ToolboxTerminate() {
    fontsAhead.reset();
    if (ahead.joinable()) {
        ahead.join();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
