// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QMetaObject>

#include <functional>
#include <memory>

// Lets worker threads call functions of main-thread objects that may be destroyed at any time. Constructed
// and destroyed on the main thread.
class MainThreadCalls
{
public:
    // Returns a function for any thread that queues a call of `callee` on the main thread. The call is
    // dropped if this object has been destroyed by then.
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
