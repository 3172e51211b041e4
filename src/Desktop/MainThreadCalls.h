// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QMetaObject>

#include <functional>
#include <memory>

// Calls from a worker thread into objects of the main thread that may end at any time. Made and destroyed on
// the main thread.
class MainThreadCalls
{
public:
    // A function that any thread may call: it has `callee` called on the main thread, unless this object is
    // gone by then.
    template <typename... Arguments>
    std::function<void(Arguments...)> wrap(std::function<void(Arguments...)> callee) const
    {
        return [alive = std::weak_ptr<bool>(m_alive), callee = std::move(callee)](Arguments... arguments) {
            const auto call = [alive, callee, arguments...] {
                if (alive.lock())
                    callee(arguments...);
            };
            QMetaObject::invokeMethod(QCoreApplication::instance(), call, Qt::QueuedConnection);
        };
    }

private:
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};
