// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/DoctorCommand.h"

#include "OrvaneApp/CommandLine/ExitStatus.h"
#include "OrvaneApp/CommandLine/ReadinessChecks.h"

#include <QPointer>

using namespace Qt::StringLiterals;

DoctorCommand::DoctorCommand(const ModelManager &models, Diagnosis &diagnosis,
                             std::function<LlamaLibrary::Description()> describeLlama, Terminal &terminal,
                             QObject *parent)
    : QObject(parent), m_models(models), m_diagnosis(diagnosis), m_describeLlama(std::move(describeLlama)),
      m_terminal(terminal)
{
}

DoctorCommand::~DoctorCommand() = default;

void DoctorCommand::start(DoctorReport::Format format)
{
    if (format == DoctorReport::Format::Text)
        m_terminal.showProgress(u"Looking at this desktop…"_s);
    m_examining = examine(format);
}

void DoctorCommand::interrupt()
{
    m_terminal.hideProgress();
    Q_EMIT finished(ExitStatus::endedOtherwise);
}

QCoro::Task<void> DoctorCommand::examine(DoctorReport::Format format)
{
    const QPointer<DoctorCommand> self(this);
    const LocalModel selected = m_models.selected();
    // The three checks run concurrently.
    const auto examiningDesktop = m_diagnosis.examine();
    const auto examiningModel =
        ReadinessChecks::model(selected, m_models.directory() + u'/' + selected.fileName);
    const auto examiningEngine = ReadinessChecks::engine(m_describeLlama);

    QList<DiagnosticCheck> checks = co_await examiningDesktop;
    const DiagnosticCheck model = co_await examiningModel;
    const DiagnosticCheck engine = co_await examiningEngine;
    if (!self)
        co_return;
    checks << model << engine;
    m_terminal.hideProgress();
    DoctorReport::write(checks, format, m_terminal);
    Q_EMIT finished(DoctorReport::exitStatus(checks));
}
