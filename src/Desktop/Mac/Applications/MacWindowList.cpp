// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Applications/MacWindowList.h"

#include "Desktop/Mac/CoreFoundationReference.h"
#include "Desktop/Mac/CoreFoundationValues.h"

#include <ApplicationServices/ApplicationServices.h>

namespace {

WindowDescription described(CFDictionaryRef window)
{
    WindowDescription description;
    if (const auto layer = CoreFoundationValues::integer(CFDictionaryGetValue(window, kCGWindowLayer)))
        description.layer = static_cast<int>(*layer);
    const auto owner = CoreFoundationValues::integer(CFDictionaryGetValue(window, kCGWindowOwnerPID));
    description.ownerProcessIdentifier = owner.value_or(0);
    description.ownerName = CoreFoundationValues::text(CFDictionaryGetValue(window, kCGWindowOwnerName));
    description.name = CoreFoundationValues::text(CFDictionaryGetValue(window, kCGWindowName));
    return description;
}

QList<WindowDescription> listed()
{
    constexpr CGWindowListOption options =
        kCGWindowListOptionOnScreenOnly | kCGWindowListExcludeDesktopElements;
    const auto windows =
        CoreFoundationReference<CFArrayRef>::adopted(CGWindowListCopyWindowInfo(options, kCGNullWindowID));
    QList<WindowDescription> result;
    const CFIndex count = windows ? CFArrayGetCount(windows.get()) : 0;
    for (CFIndex i = 0; i < count; ++i)
        result.append(described(static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(windows.get(), i))));
    return result;
}

} // namespace

QCoro::Task<QList<WindowDescription>> MacWindowList::onScreenWindows()
{
    try {
        co_return co_await m_queue.run(&listed);
    } catch (const PlatformError &) {
        co_return QList<WindowDescription>();
    }
}
