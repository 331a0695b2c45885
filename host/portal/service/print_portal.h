// The desktop's portal asks here for its print dialog: each request is a dialog, or a job, in a process of its own.
#pragma once

#include "host/portal/service/kept_settings.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTimer>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <vector>

class PrintPortal : public QDBusVirtualObject {
public:
    struct Setup {
        QString program;                 // tavro-print
        QStringList arguments;           // more for it
        std::chrono::seconds keep;       // what was prepared
        std::chrono::seconds idle;       // then there is nothing to wait for any more
        std::function<void()> fallIdle;  // called once that is so
    };

    PrintPortal(QDBusConnection connection, Setup setup);
    ~PrintPortal() override;
    PrintPortal(const PrintPortal&) = delete;
    PrintPortal& operator=(const PrintPortal&) = delete;

    /// Whether something is open or kept.
    [[nodiscard]] bool isBusy() const { return !requests_.empty() || !kept_.isEmpty(); }

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    /// An open one, under the path by which the caller can close it.
    struct Request {
        QDBusMessage message;
        QString program;
        bool isPreparing = false;
        std::unique_ptr<WorkFolder> folder;
        std::unique_ptr<QProcess> process;
    };
    using Requests = std::map<QString, Request>;

    struct Argument {
        const char* type;  // as the bus writes it
        const char* name;
    };
    /// A method that others call.
    struct Call {
        const char* interface;
        const char* member;
        std::vector<Argument> arguments;
        std::vector<Argument> results;
        void (PrintPortal::*act)(const QDBusMessage&);
    };
    static const std::vector<Call>& calls();

    void prepare(const QDBusMessage& message);
    void print(const QDBusMessage& message);
    void close(const QDBusMessage& message);
    void forget(const QString& caller);

    /// Starts the program for a request. `document` is its standard input; -1 for none.
    void start(Request request, const QVariantMap& values, int document);
    void end(const QString& path, int status);
    void reply(const QDBusMessage& message, uint response, const QVariantMap& results = {}) const;
    /// Waits for what comes next by itself, if anything does.
    void rest();

    QDBusConnection connection_;
    Setup setup_;
    KeptSettings kept_;
    Requests requests_;
    QDBusServiceWatcher callers_;
    QTimer timer_;
};
