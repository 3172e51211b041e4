// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Diagnosis.h"

#include "Base/Text.h"

namespace {

DiagnosticCheck concluded(DiagnosticCheck check, DiagnosticCheck::State state, const QString &what,
                          const QString &remedy)
{
    check.state = state;
    check.finding = Text::trimmed(Text::cleaned(what));
    check.advice = Text::trimmed(Text::cleaned(remedy));
    return check;
}

} // namespace

DiagnosticCheck DiagnosticCheck::working(const QString &what) const
{
    return concluded(*this, State::Works, what, QString());
}

DiagnosticCheck DiagnosticCheck::limited(const QString &what, const QString &remedy) const
{
    return concluded(*this, State::Limited, what, remedy);
}

DiagnosticCheck DiagnosticCheck::broken(const QString &what, const QString &remedy) const
{
    return concluded(*this, State::Broken, what, remedy);
}

DiagnosticCheck DiagnosticCheck::absent(const QString &what, const QString &remedy) const
{
    return concluded(*this, State::Absent, what, remedy);
}

bool DiagnosticCheck::isObstacle() const
{
    return need == Need::Actions && (state == State::Broken || state == State::Absent);
}
