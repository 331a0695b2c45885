// The object behind a bundle, and what the plug-in registry needs of it.
#pragma once

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/objects.h"

#include <QHash>
#include <QSet>
#include <QStringList>

struct CFBundleObject final : CFObject {
    static constexpr ObjectKind kKind = ObjectKind::Bundle;

    CFBundleObject(QString folder, CFRef<CFDictionaryRef> info);
    ~CFBundleObject() override;

    /// The bundle's folder without symbolic links, and a file or folder inside Contents.
    const QString root;
    QString inContents(const QString& path) const { return root + QStringLiteral("/Contents/") + path; }

    const CFRef<CFDictionaryRef> info;  // Info.plist
    const QStringList languages;        // the user's that it has texts of, the first choice first

    /// A table in one language, read when first asked for; null when it is missing or broken.
    CFDictionaryRef table(const QString& name, const QString& language);

    /// Says once that English, or another language, stands in for texts of a table that this language lacks.
    void tellOfLack(const QString& name, const QString& language);

    void* code = nullptr;  // the executable, once loaded

private:
    QHash<QString, CFRef<CFDictionaryRef>> tables_;  // by path inside Resources
    QSet<QString> told_;                             // the paths of those that have been complained of
};

/// Sets what CFBundleGetLastError answers; an empty reason means that nothing failed.
void setLastBundleError(const QString& reason);

/// Takes the bundle's factories out of the plug-in registry.
void forgetFactories(const CFBundleObject& bundle);
