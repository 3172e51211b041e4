// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Window/MacAppearance.h"

#include <AppKit/AppKit.h>

#include <functional>

namespace {

NSString *const observedKey = @"effectiveAppearance";

bool isApplicationDark()
{
    NSArray<NSAppearanceName> *const known = @[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ];
    NSAppearanceName const match = [NSApp.effectiveAppearance bestMatchFromAppearancesWithNames:known];
    return [match isEqualToString:NSAppearanceNameDarkAqua];
}

} // namespace

// Calls a function on every change of the application's appearance.
@interface OrvaneAppearanceObserver : NSObject
@property(nonatomic) std::function<void()> changed;
@end

@implementation OrvaneAppearanceObserver

- (void)observeValueForKeyPath:(NSString *)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id> *)change
                       context:(void *)context
{
    Q_UNUSED(keyPath)
    Q_UNUSED(object)
    Q_UNUSED(change)
    Q_UNUSED(context)
    self.changed();
}

@end

struct MacAppearance::Observation
{
    explicit Observation(std::function<void()> changed)
    {
        observer.changed = std::move(changed);
        [NSApp addObserver:observer forKeyPath:observedKey options:0 context:nullptr];
    }
    ~Observation() { [NSApp removeObserver:observer forKeyPath:observedKey]; }
    Observation(const Observation &) = delete;
    Observation &operator=(const Observation &) = delete;

    OrvaneAppearanceObserver *const observer = [[OrvaneAppearanceObserver alloc] init];
};

MacAppearance::MacAppearance()
{
    setDark(isApplicationDark());
    m_observation = std::make_unique<Observation>([this] { setDark(isApplicationDark()); });
}

MacAppearance::~MacAppearance() = default;
