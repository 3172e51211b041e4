// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Applications/MacApplications.h"

#include "Base/Text.h"

#import <AppKit/AppKit.h>

using namespace Qt::StringLiterals;

namespace {

std::optional<ApplicationFolder> listed(const QString &path)
{
    NSArray<NSString *> *names = [NSFileManager.defaultManager contentsOfDirectoryAtPath:path.toNSString()
                                                                                   error:nil];
    if (!names)
        return std::nullopt;
    ApplicationFolder folder{path, {}};
    for (NSString *name in names) {
        const QString text = QString::fromNSString(name);
        folder.entries.append({Text::cleaned(text), MacApplications::bundleAt(path + u'/' + text)});
    }
    return folder;
}

} // namespace

RunningApplication MacApplications::described(NSRunningApplication *application)
{
    RunningApplication result;
    result.processIdentifier = application.processIdentifier;
    if (application.localizedName)
        result.localizedName = Text::cleaned(QString::fromNSString(application.localizedName));
    if (application.bundleURL)
        result.bundle = bundleAt(QString::fromNSString(application.bundleURL.path));
    result.isRegular = application.activationPolicy == NSApplicationActivationPolicyRegular;
    return result;
}

ApplicationBundle MacApplications::bundleAt(const QString &path)
{
    NSString *name = path.toNSString().lastPathComponent.stringByDeletingPathExtension;
    return {path, Text::cleaned(QString::fromNSString(name))};
}

NSRunningApplication *MacApplications::running(qint64 processIdentifier)
{
    return
        [NSRunningApplication runningApplicationWithProcessIdentifier:static_cast<pid_t>(processIdentifier)];
}

QList<ApplicationFolder> MacApplications::folders()
{
    NSURL *home = NSFileManager.defaultManager.homeDirectoryForCurrentUser;
    const QStringList paths{
        u"/Applications"_s,
        u"/System/Applications"_s,
        u"/System/Applications/Utilities"_s,
        u"/Applications/Utilities"_s,
        QString::fromNSString(home.path) + u"/Applications"_s,
    };
    QList<ApplicationFolder> result;
    for (const QString &path : paths) {
        if (auto folder = listed(path))
            result.append(std::move(*folder));
    }
    return result;
}
