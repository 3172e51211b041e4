// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

// Whether the user's desktop is light or dark, at this moment and as it changes. Main thread. The first value
// is what can be told at once; where a better source has to be asked, its answer arrives as a change.
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

    // For the platform's body; tells of real changes only.
    void setDark(bool isDark);

private:
    bool m_isDark = false;
};
