// Prints a file through the portal's print backend, as its portal would, and says how long each of the two calls took.
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QElapsedTimer>

#include <cstdio>
#include <cstdlib>

#include <fcntl.h>

namespace {

constexpr int kPatience = 600'000;  // milliseconds

/// The call's results; ends the program unless it was answered with success.
QVariantMap call(const char* method, const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.impl.portal.desktop.tavro"), QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.impl.portal.Print"), QString::fromLatin1(method));
    message.setArguments(QVariantList{QVariant::fromValue(QDBusObjectPath(QStringLiteral("/request/1"))),
                                      QStringLiteral("bench"), QString(), QStringLiteral("A large document")} +
                         arguments);
    QElapsedTimer timer;
    timer.start();
    const QDBusMessage reply = QDBusConnection::sessionBus().call(message, QDBus::Block, kPatience);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().at(0).toUInt() != 0) {
        std::fprintf(stderr, "%s failed: %s\n", method, qPrintable(reply.errorMessage()));
        std::exit(1);
    }
    std::printf("%s: %.1f s\n", method, static_cast<double>(timer.elapsed()) / 1000);
    return qdbus_cast<QVariantMap>(reply.arguments().at(1));
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const int file = argc == 2 ? open(argv[1], O_RDONLY | O_CLOEXEC) : -1;
    if (file < 0) {
        std::fprintf(stderr, "usage: portal_document DOCUMENT\n");
        return 2;
    }
    const QVariantMap prepared = call("PreparePrint", {QVariantMap(), QVariantMap(), QVariantMap()});
    call("Print", {QVariant::fromValue(QDBusUnixFileDescriptor(file)),
                   QVariantMap{{QStringLiteral("token"), prepared.value(QStringLiteral("token"))}}});
    return 0;
}
