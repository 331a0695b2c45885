#include "platform/foundation/message_tables.h"

#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/locale_digits.h"
#include "platform/foundation/message_places.h"
#include "platform/foundation/objects.h"
#include "platform/foundation/strings_table.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/user_languages.h"

#include <QDir>
#include <QFile>

#include <mutex>
#include <utility>
#include <vector>

namespace {

// A message of the reader of a table, which is not there yet.
thread_local bool isReading = false;

/// Not a bundle's: a broken bundle has a message, too, and messages come from all threads.
class MessageTables {
public:
    void open(const std::string& folder) {
        const std::lock_guard lock(mutex_);
        folder_ = QString::fromStdString(folder);
        isRead_ = false;
    }

    QString text(const QString& english) {
        const std::lock_guard lock(mutex_);
        if (!std::exchange(isRead_, true)) {
            read();
        }
        if (table_.isEmpty() || table_.contains(english) || !master().contains(english)) {
            return table_.value(english, english);
        }
        if (!std::exchange(isToldToLack_, true)) {
            printLine(stderr, (path_ + QStringLiteral(": ") +
                               table_.value(QStringLiteral("texts are missing"), QStringLiteral("texts are missing")))
                                  .toStdString());
        }
        return english;
    }

private:
    using Table = QHash<QString, QString>;

    void read() {
        table_.clear();
        QString lacking;  // the table of the user's language
        for (const QString& language : userLanguages()) {
            const QDir folder(folder_ + u'/' + language + QStringLiteral(".lproj"));
            path_ = folder.filePath(QStringLiteral("Messages.strings"));
            const bool isEnglish = language == u"en";  // whose texts are their own keys
            if (isEnglish || QFile::exists(path_)) {
                if (!lacking.isEmpty()) {
                    printLine(stderr, (lacking + QStringLiteral(": is missing")).toStdString());
                }
                table_ = isEnglish ? Table() : readTable(path_);
                return;
            }
            if (lacking.isEmpty() && folder.exists()) {
                lacking = path_;
            }
        }
    }

    static Table readTable(const QString& path) {
        isReading = true;
        QFile file(path);
        QString reason;
        CFRef<CFDictionaryRef> rows;
        if (file.open(QFile::ReadOnly)) {
            CFRef<CFStringRef> error;
            const auto data = CFRef<CFDataRef>::adopt(new CFDataObject(file.readAll()));
            rows = readStringsTable(data.get(), &error);
            reason = textOf(error.get());
        } else {
            reason = file.errorString();
        }
        isReading = false;
        if (!rows) {
            printLine(stderr, (path + QStringLiteral(": ") + reason).toStdString());
        }
        Table table;
        const auto count = static_cast<std::size_t>(CFDictionaryGetCount(rows.get()));
        std::vector<const void*> keys(count);
        std::vector<const void*> values(count);
        CFDictionaryGetKeysAndValues(rows.get(), keys.data(), values.data());
        for (std::size_t i = 0; i < count; ++i) {
            table.insert(textOf(static_cast<CFStringRef>(keys[i])),
                         withDigitsOfLocale(textOf(static_cast<CFStringRef>(values[i]))));
        }
        return table;
    }

    /// The English table: what it has not is another library's text, and nobody's fault.
    const Table& master() {
        if (!std::exchange(isMasterRead_, true)) {
            master_ = readTable(folder_ + QStringLiteral("/en.lproj/Messages.strings"));
        }
        return master_;
    }

    std::mutex mutex_;
    QString folder_;
    QString path_;
    Table table_;
    Table master_;
    bool isRead_ = false;
    bool isMasterRead_ = false;
    bool isToldToLack_ = false;
};

MessageTables& tables() {
    static auto& only = *new MessageTables;
    return only;
}

MessageValue shown(const MessageValue& value) {
    return value.isNumber()
               ? textOf(CFRef<CFStringRef>::adopt(CFNumberListCreateLocalized(
                                                      nullptr, makeString(QString::fromStdString(value.text())).get()))
                            .get())
                     .toStdString()
               : value.text();
}

std::string writeMessage(std::string_view english, std::span<const MessageValue> values) {
    if (isReading) {
        return fillMessage(english, values);
    }
    const std::vector<MessageValue> texts = [&] {
        std::vector<MessageValue> made;
        for (const MessageValue& value : values) {
            made.push_back(shown(value));
        }
        return made;
    }();
    const QString key = QString::fromUtf8(english.data(), static_cast<qsizetype>(english.size()));
    return fillMessage(tables().text(key).toStdString(), texts);
}

}  // namespace

void showMessagesOf(const std::string& resourcesFolder) {
    tables().open(resourcesFolder);
    setMessageWriter(writeMessage);
}
