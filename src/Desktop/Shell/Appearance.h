// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

// Whether the desktop's theme is dark. The initial value comes from what is available synchronously; a
// slower, more reliable source reports by `isDarkChanged`. Thread: main.
class Appearance : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isDark READ isDark NOTIFY isDarkChanged)

public:
    bool isDark() const { return m_isDark; }

Q_SIGNALS:
    void isDarkChanged();

protected:
    using QObject::QObject;

    // Called by the backend; emits only if the value changes.
    void setDark(bool isDark);

private:
    bool m_isDark = false;
};
