// tavro-portal: the print dialog for programs that ask the desktop for one. The message bus starts it.

#include "host/portal/service/print_portal.h"
#include "platform/files/temporary_files.h"
#include "platform/foundation/terminal_text.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QFileInfo>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>

#include <sys/signalfd.h>

namespace {

constexpr auto kName = "org.freedesktop.impl.portal.desktop.tavro";

/// Beside this program in a build, and where it is installed.
QString dialogPath() {
    const QString folder = QCoreApplication::applicationDirPath();
    const QString inBuild = folder + QStringLiteral("/../bin/tavro-print");
    return QFileInfo::exists(inBuild) ? inBuild : folder + QStringLiteral("/" TAVRO_PROGRAM_PLACE "/tavro-print");
}

/// What asks the program to end comes as an event, so that nothing of its requests is left.
int openEndingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signals, signal);
    }
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return signalfd(-1, &signals, SFD_CLOEXEC);
}

int fail(const std::string& line) {
    printLine(stderr, "tavro-portal: " + line);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    const int ending = openEndingSignals();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tavro-portal"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TAVRO_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows the Tavro print dialog to programs that ask the desktop portal for one.\n"
                       "The message bus starts it when somebody asks; it leaves when nobody does any more."));
    const QCommandLineOption keep(QStringLiteral("keep"),
                                  QStringLiteral("how long what was prepared waits for its document"),
                                  QStringLiteral("SECONDS"), QStringLiteral("1800"));
    const QCommandLineOption idle(QStringLiteral("idle"), QStringLiteral("how long to wait for somebody who asks"),
                                  QStringLiteral("SECONDS"), QStringLiteral("60"));
    const QCommandLineOption script(QStringLiteral("script"), QStringLiteral("drive each dialog from a file"),
                                    QStringLiteral("FILE"));
    const QCommandLineOption shots(QStringLiteral("shots"), QStringLiteral("where the script's pictures go"),
                                   QStringLiteral("DIR"));
    parser.addOptions({keep, idle, script, shots});
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);

    QStringList arguments;
    for (const QCommandLineOption* option : {&script, &shots}) {
        if (parser.isSet(*option)) {
            arguments << QStringLiteral("--") + option->names().constFirst() << parser.value(*option);
        }
    }

    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return fail("there is no session bus");
    }
    sweepRuntimeFolder();
    PrintPortal* portal = nullptr;
    // A request that came before the name was given up is still served.
    const auto leave = [&] {
        bus.unregisterService(QLatin1String(kName));
        QCoreApplication::processEvents();
        if (!portal->isBusy()) {
            QCoreApplication::quit();
        } else if (!bus.registerService(QLatin1String(kName))) {
            printLine(stderr, "tavro-portal: another one has taken its place");
        }
    };
    PrintPortal served(bus, {dialogPath(), arguments, std::chrono::seconds(parser.value(keep).toUInt()),
                             std::chrono::seconds(parser.value(idle).toUInt()), leave});
    portal = &served;
    if (!bus.registerVirtualObject(QStringLiteral("/"), &served, QDBusConnection::SubPath) ||
        !bus.registerService(QLatin1String(kName))) {
        return fail("it runs already");
    }
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
                QStringLiteral("Disconnected"), QCoreApplication::instance(), SLOT(quit()));
    const QSocketNotifier ended(ending, QSocketNotifier::Read);
    QObject::connect(&ended, &QSocketNotifier::activated, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
