// SPDX-License-Identifier: Apache-2.0
#include "applications/support/LabwcScreen.h"

#include "applications/support/PrivateDesktop.h"
#include "applications/support/WaylandUserKeyboard.h"
#include "applications/support/X11Names.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <memory>
#include <span>
#include <vector>

#include <wlr-foreign-toplevel-management-unstable-v1-client-protocol.h>

using namespace Qt::StringLiterals;

namespace {

using Handle = zwlr_foreign_toplevel_handle_v1;
using Manager = zwlr_foreign_toplevel_manager_v1;

bool isProgram(const QString &process, const QString &program)
{
    const QString file = QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(process));
    return QFileInfo(file).fileName().compare(program, Qt::CaseInsensitive) == 0;
}

bool hasFilesOfThisHome(const QString &process)
{
    const QDir descriptors(u"/proc/%1/fd"_s.arg(process));
    return std::ranges::any_of(descriptors.entryInfoList(QDir::Files), [](const QFileInfo &file) {
        return file.symLinkTarget().startsWith(PrivateDesktop::home());
    });
}

// Numbers of processes count up, until they start over after some millions. Chromium overwrites its
// environment, by which processes of this desktop are known, but has its profile open.
qint64 oldestProcessOf(const QString &program)
{
    const QList<qint64> known = PrivateDesktop::processesWith({});
    qint64 oldest = 0;
    for (const QString &name : QDir(u"/proc"_s).entryList({u"[1-9]*"_s}, QDir::Dirs)) {
        const qint64 process = name.toLongLong();
        const bool isOlder = oldest == 0 || process < oldest;
        if (isOlder && isProgram(name, program) && (known.contains(process) || hasFilesOfThisHome(name)))
            oldest = process;
    }
    return oldest;
}

struct Toplevel
{
    quint32 identifier = 0;
    Handle *handle = nullptr;
    QString title;
    QString applicationIdentifier;
    bool isActive = false;
    bool isClosed = false;
};

Toplevel &toplevelOf(void *data)
{
    return *static_cast<Toplevel *>(data);
}

void setState(void *data, Handle *, wl_array *states)
{
    const std::span values(static_cast<const std::uint32_t *>(states->data),
                           states->size / sizeof(std::uint32_t));
    toplevelOf(data).isActive =
        std::ranges::find(values, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED) != values.end();
}

constexpr zwlr_foreign_toplevel_handle_v1_listener toplevelListener{
    .title = [](void *data, Handle *, const char *text) { toplevelOf(data).title = QString::fromUtf8(text); },
    .app_id = [](void *data, Handle *,
                 const char *text) { toplevelOf(data).applicationIdentifier = QString::fromUtf8(text); },
    .output_enter = [](void *, Handle *, wl_output *) {},
    .output_leave = [](void *, Handle *, wl_output *) {},
    .state = &setState,
    .done = [](void *, Handle *) {},
    .closed = [](void *data, Handle *) { toplevelOf(data).isClosed = true; },
    .parent = [](void *, Handle *, Handle *) {},
};

class Observer : public ScreenObserver
{
public:
    Observer()
    {
        static constexpr zwlr_foreign_toplevel_manager_v1_listener listener{
            .toplevel = [](void *data, Manager *,
                           Handle *handle) { static_cast<Observer *>(data)->add(handle); },
            .finished = [](void *, Manager *) {},
        };
        auto *manager = m_connection.bind<Manager>(zwlr_foreign_toplevel_manager_v1_interface);
        zwlr_foreign_toplevel_manager_v1_add_listener(manager, &listener, this);
        m_seat = m_connection.bind<wl_seat>(wl_seat_interface);
    }

    QList<ScreenWindow> windows() override
    {
        update();
        QList<ScreenWindow> found;
        for (const std::unique_ptr<Toplevel> &toplevel : m_toplevels)
            found << described(*toplevel);
        return found;
    }

    std::optional<ScreenWindow> activeWindow() override
    {
        update();
        const auto active = std::ranges::find_if(
            m_toplevels, [](const std::unique_ptr<Toplevel> &toplevel) { return toplevel->isActive; });
        return active == m_toplevels.end() ? std::nullopt : std::optional(described(**active));
    }

    void pressKey(const QString &combination) override { m_keyboard.press(combination); }

    void requestFocus(quint32 window) override
    {
        for (const std::unique_ptr<Toplevel> &toplevel : m_toplevels) {
            if (toplevel->identifier == window)
                zwlr_foreign_toplevel_handle_v1_activate(toplevel->handle, m_seat);
        }
        m_connection.roundTrip();
    }

private:
    void add(Handle *handle)
    {
        auto toplevel = std::make_unique<Toplevel>();
        toplevel->identifier = ++m_last;
        toplevel->handle = handle;
        zwlr_foreign_toplevel_handle_v1_add_listener(handle, &toplevelListener, toplevel.get());
        m_toplevels.push_back(std::move(toplevel));
    }

    void update()
    {
        m_connection.roundTrip();
        std::erase_if(m_toplevels, [](const auto &toplevel) {
            if (toplevel->isClosed)
                zwlr_foreign_toplevel_handle_v1_destroy(toplevel->handle);
            return toplevel->isClosed;
        });
    }

    static ScreenWindow described(const Toplevel &toplevel)
    {
        ScreenWindow window;
        window.identifier = toplevel.identifier;
        window.title = toplevel.title;
        window.applicationIdentifier = toplevel.applicationIdentifier;
        window.className = X11Names::classOf(toplevel.applicationIdentifier);
        window.process = oldestProcessOf(window.className.section(u'.', -1));
        return window;
    }

    WaylandUserKeyboard m_keyboard;
    WaylandUserConnection m_connection;
    wl_seat *m_seat = nullptr;
    std::vector<std::unique_ptr<Toplevel>> m_toplevels; // oldest first
    quint32 m_last = 0;
};

} // namespace

ScreenObserver &LabwcScreen::observer()
{
    static Observer observer;
    return observer;
}
