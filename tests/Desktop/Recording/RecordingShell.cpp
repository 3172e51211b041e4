// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Recording/RecordingShell.h"

#include <QWindow>

using namespace Qt::StringLiterals;

class RecordingHotKeys::Reference : public HotKeyReference
{
public:
    explicit Reference(HotKey hotKey) : m_hotKey(std::move(hotKey)) {}
    const HotKey &hotKey() const { return m_hotKey; }

private:
    HotKey m_hotKey;
};

QList<RecordingHotKeys::HotKey> RecordingHotKeys::registered() const
{
    QList<HotKey> result;
    for (const std::weak_ptr<Reference> &each : m_references) {
        if (const auto reference = each.lock())
            result.append(reference->hotKey());
    }
    return result;
}

bool RecordingHotKeys::press(std::uint16_t virtualKey, HotKeyModifiers modifiers) const
{
    for (const HotKey &each : registered()) {
        if (each.virtualKey == virtualKey && each.modifiers == modifiers) {
            each.pressed();
            return true;
        }
    }
    return false;
}

QCoro::Task<std::shared_ptr<HotKeyReference>> RecordingHotKeys::registerHotKey(std::uint16_t virtualKey,
                                                                               HotKeyModifiers modifiers,
                                                                               HotKeyIdentifier identifier,
                                                                               std::function<void()> pressed)
{
    co_await m_journal.turn();
    if (isOwnedByAnother)
        co_return std::shared_ptr<HotKeyReference>();
    HotKey hotKey{virtualKey, modifiers, identifier, std::move(pressed)};
    const auto reference = std::make_shared<Reference>(std::move(hotKey));
    m_references.append(reference);
    m_journal.note(u"register hot key %1 with modifiers %2"_s.arg(virtualKey).arg(modifiers.toInt()));
    co_return std::shared_ptr<HotKeyReference>(reference);
}

void RecordingWindowStyler::style(QWindow &window)
{
    m_journal.note(u"style window “%1”"_s.arg(window.title()));
    styled.append(&window);
}

void RecordingWindowStyler::bringForward(QWindow &window, const QString &activationToken)
{
    m_journal.note(u"bring window “%1” forward"_s.arg(window.title()));
    broughtForward.append(&window);
    tokens.append(activationToken);
    window.show();
    window.raise();
    window.requestActivate();
}

bool RecordingWindowStyler::hideApplication()
{
    if (canHideApplication)
        m_journal.note(u"hide the application"_s);
    return canHideApplication;
}

QCoro::Task<InstanceStanding> RecordingProgramInstance::claim(InstanceRequest newRequest)
{
    co_await m_journal.begin(RecordedOperation::ClaimInstance);
    request = newRequest;
    co_return standing;
}
