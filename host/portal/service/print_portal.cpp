#include "host/portal/service/print_portal.h"

#include "host/portal/request_keys.h"
#include "host/portal/service/request_file.h"
#include "platform/foundation/terminal_text.h"

#include <QDBusArgument>
#include <QDBusUnixFileDescriptor>

#include <algorithm>
#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

constexpr auto kPrintInterface = "org.freedesktop.impl.portal.Print";
constexpr auto kRequestInterface = "org.freedesktop.impl.portal.Request";

// What the portal takes for an answer.
constexpr uint kDone = 0;
constexpr uint kCancelled = 1;
constexpr uint kFailed = 2;

/// Whoever has it started is about to ask.
constexpr std::chrono::seconds kFirstPatience(60);

/// A program that goes wild shall not fill the screen.
constexpr std::size_t kMostRequests = 8;

QString handleOf(const QDBusMessage& message) {
    return message.arguments().at(0).value<QDBusObjectPath>().path();
}

QVariantMap mapAt(const QDBusMessage& message, int index) {
    return qdbus_cast<QVariantMap>(message.arguments().at(index));
}

QString keyOf(CFStringRef key) {
    QString text(static_cast<qsizetype>(CFStringGetLength(key)), QChar());
    CFStringGetCharacters(key, CFRangeMake(0, CFStringGetLength(key)), reinterpret_cast<UniChar*>(text.data()));
    return text;
}

/// What both kinds of request say about their dialog.
QVariantMap dialogOf(const QDBusMessage& message, const QVariantMap& options) {
    QVariantMap values;
    values[keyOf(kPortalTitleKey)] = plainText(message.arguments().at(3).toString());
    const QString parent = message.arguments().at(2).toString();
    if (!parent.isEmpty() && options.value(QStringLiteral("modal"), true).toBool()) {
        values[keyOf(kPortalParentKey)] = plainText(parent);
    }
    if (const QString label = options.value(QStringLiteral("accept_label")).toString(); !label.isEmpty()) {
        values[keyOf(kPortalAcceptLabelKey)] = plainText(label);
    }
    if (const auto formats = options.find(QStringLiteral("supported_output_file_formats")); formats != options.end()) {
        values[keyOf(kPortalFormatsKey)] = plainText(qdbus_cast<QStringList>(*formats).join(u' '));
    }
    return values;
}

/// Whether the caller itself could read what the descriptor stands for. By a path to it, it can be opened anew with
/// rights that the caller does not have.
bool isForReading(int file) {
    const int flags = fcntl(file, F_GETFL);
    return flags >= 0 && (flags & O_PATH) == 0 && (flags & O_ACCMODE) != O_WRONLY;
}

}  // namespace

PrintPortal::PrintPortal(QDBusConnection connection, Setup setup)
    : connection_(std::move(connection)), setup_(std::move(setup)), kept_(setup_.keep) {
    callers_.setConnection(connection_);
    callers_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&callers_, &QDBusServiceWatcher::serviceUnregistered, this, &PrintPortal::forget);
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::VeryCoarseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] {
        kept_.expire();
        isBusy() ? rest() : setup_.fallIdle();
    });
    timer_.start(std::max(setup_.idle, kFirstPatience));
}

PrintPortal::~PrintPortal() {
    for (auto& [path, request] : requests_) {
        request.process->disconnect();
        request.process->terminate();
        request.process->waitForFinished();
    }
}

const std::vector<PrintPortal::Call>& PrintPortal::calls() {
    static const std::vector<Argument> kResults{{"u", "response"}, {"a{sv}", "results"}};
    static const std::vector<Call> kCalls{
        // interface, method, its arguments, its results, what is done
        {kPrintInterface,
         "PreparePrint",
         {{"o", "handle"},
          {"s", "app_id"},
          {"s", "parent_window"},
          {"s", "title"},
          {"a{sv}", "settings"},
          {"a{sv}", "page_setup"},
          {"a{sv}", "options"}},
         kResults,
         &PrintPortal::prepare},
        {kPrintInterface,
         "Print",
         {{"o", "handle"}, {"s", "app_id"}, {"s", "parent_window"}, {"s", "title"}, {"h", "fd"}, {"a{sv}", "options"}},
         kResults,
         &PrintPortal::print},
        {kRequestInterface, "Close", {}, {}, &PrintPortal::close},
    };
    return kCalls;
}

QString PrintPortal::introspect(const QString& path) const {
    const char* const interface = requests_.contains(path) ? kRequestInterface : kPrintInterface;
    QString methods;
    const auto add = [&methods](const std::vector<Argument>& arguments, const char* direction) {
        for (const Argument& each : arguments) {
            methods += QStringLiteral("<arg type=\"%1\" name=\"%2\" direction=\"%3\"/>\n")
                           .arg(QLatin1String(each.type), QLatin1String(each.name), QLatin1String(direction));
        }
    };
    for (const Call& call : calls()) {
        if (call.interface == QLatin1String(interface)) {
            methods += QStringLiteral("<method name=\"%1\">\n").arg(QLatin1String(call.member));
            add(call.arguments, "in");
            add(call.results, "out");
            methods += QStringLiteral("</method>\n");
        }
    }
    return QStringLiteral("<interface name=\"%1\">\n%2</interface>").arg(QLatin1String(interface), methods);
}

bool PrintPortal::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
    for (const Call& call : calls()) {
        QString signature;
        for (const Argument& argument : call.arguments) {
            signature += QLatin1String(argument.type);
        }
        if (message.interface() == QLatin1String(call.interface) && message.member() == QLatin1String(call.member) &&
            message.signature() == signature) {
            message.setDelayedReply(true);
            (this->*call.act)(message);
            return true;
        }
    }
    return false;
}

void PrintPortal::prepare(const QDBusMessage& message) {
    const QVariantMap options = mapAt(message, 6);
    QVariantMap values = dialogOf(message, options);
    values[keyOf(kPortalKindKey)] = QString::fromStdString(portal::kPrepare);
    values[keyOf(kPortalHasCurrentKey)] = options.value(QStringLiteral("has_current_page")).toBool();
    values[keyOf(kPortalHasSelectionKey)] = options.value(QStringLiteral("has_selected_pages")).toBool();
    values[keyOf(kPortalSettingsKey)] = plainValues(mapAt(message, 4));
    values[keyOf(kPortalPageSetupKey)] = plainValues(mapAt(message, 5));
    start({message, message.arguments().at(1).toString(), true, nullptr, nullptr}, values, -1);
}

void PrintPortal::print(const QDBusMessage& message) {
    const auto file = message.arguments().at(4).value<QDBusUnixFileDescriptor>();
    if (!isForReading(file.fileDescriptor())) {
        printLine(stderr, "tavro-portal: the document that came cannot be read");
        reply(message, kFailed);
        return;
    }
    const QVariantMap options = mapAt(message, 5);
    const QString program = message.arguments().at(1).toString();
    auto prepared = kept_.take(options.value(QStringLiteral("token")).toUInt(), program, message.service());
    QVariantMap values = dialogOf(message, options);
    values[keyOf(kPortalKindKey)] = QString::fromStdString(prepared ? portal::kPrint : portal::kChoose);
    start({message, program, false, std::move(prepared), nullptr}, values, file.fileDescriptor());
}

void PrintPortal::start(Request request, const QVariantMap& values, int document) {
    const QString path = handleOf(request.message);
    if (requests_.contains(path) || requests_.size() >= kMostRequests) {
        printLine(stderr, "tavro-portal: too many print dialogs are open");
        reply(request.message, kFailed);
        return;
    }
    if (!request.folder) {
        request.folder = std::make_unique<WorkFolder>(runtimeFolder());
    }
    const std::string& folder = request.folder->path();
    if (folder.empty() || !writeValues(values, folder + "/" + portal::kRequestFile)) {
        printLine(stderr, "tavro-portal: " + runtimeFolder() + ": nothing can be written there");
        reply(request.message, kFailed);
        return;
    }
    request.process = std::make_unique<QProcess>();
    QProcess& process = *request.process;
    process.setProgram(setup_.program);
    process.setArguments(QStringList{QStringLiteral("--portal"), QString::fromStdString(folder)} + setup_.arguments);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setInputChannelMode(QProcess::ForwardedInputChannel);
    process.setChildProcessModifier([document] {
        const int input = document >= 0 ? document : open("/dev/null", O_RDONLY | O_CLOEXEC);
        dup2(input, STDIN_FILENO);
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
        prctl(PR_SET_PDEATHSIG, SIGTERM);
    });
    connect(&process, &QProcess::finished, this, [this, path](int code, QProcess::ExitStatus status) {
        end(path, status == QProcess::NormalExit ? code : -1);
    });
    connect(&process, &QProcess::errorOccurred, this, [this, path](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            printLine(stderr, "tavro-portal: " + setup_.program.toStdString() + ": cannot be started");
            QTimer::singleShot(0, this, [this, path] { end(path, -1); });
        }
    });
    callers_.addWatchedService(request.message.service());
    timer_.stop();
    requests_.emplace(path, std::move(request)).first->second.process->start();
}

/// The dialog's exit status says how it ended.
void PrintPortal::end(const QString& path, int status) {
    const auto found = requests_.find(path);
    if (found == requests_.end()) {
        return;
    }
    Request request = std::move(found->second);
    requests_.erase(found);
    request.process.release()->deleteLater();  // it is calling
    if (status == 0 && request.isPreparing) {
        const auto answer = readValues(request.folder->path() + "/" + portal::kAnswerFile);
        if (answer) {
            const quint32 token = kept_.keep(std::move(request.folder), request.program, request.message.service());
            reply(request.message, kDone,
                  {{QStringLiteral("settings"), answer->value(keyOf(kPortalSettingsKey))},
                   {QStringLiteral("page-setup"), answer->value(keyOf(kPortalPageSetupKey))},
                   {QStringLiteral("token"), token}});
        } else {
            request.folder.reset();
            reply(request.message, kFailed);
        }
    } else {
        request.folder.reset();
        reply(request.message, status == 0 ? kDone : status == 1 ? kCancelled : kFailed);
    }
    rest();
}

void PrintPortal::close(const QDBusMessage& message) {
    connection_.send(message.createReply());
    if (const auto found = requests_.find(message.path()); found != requests_.end()) {
        found->second.process->terminate();
    }
}

void PrintPortal::forget(const QString& caller) {
    callers_.removeWatchedService(caller);
    kept_.forget(caller);
    for (auto& [path, request] : requests_) {
        if (request.message.service() == caller) {
            request.process->terminate();
        }
    }
    rest();
}

void PrintPortal::reply(const QDBusMessage& message, uint response, const QVariantMap& results) const {
    connection_.send(message.createReply(QVariantList{response, results}));
}

void PrintPortal::rest() {
    if (!requests_.empty()) {
        return;
    }
    const auto next = kept_.expire();
    timer_.start(next.value_or(setup_.idle));
}
