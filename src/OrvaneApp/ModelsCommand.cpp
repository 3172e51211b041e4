// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/ModelsCommand.h"

#include "OrvaneApp/ExitStatus.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr int identifierWidth = 14;

bool isPresent(const LocalModel &model, const QString &directory)
{
    return QFileInfo::exists(directory + u'/' + model.fileName);
}

} // namespace

int ModelsCommand::list(const ModelManager &models, Terminal &terminal)
{
    const QString directory = models.directory();
    for (const LocalModel &model : LocalModel::catalog()) {
        const QString mark = model == models.selected() ? u"* "_s : u"  "_s;
        const QString presence = isPresent(model, directory) ? u"on this machine"_s : u"not downloaded"_s;
        terminal.line(mark + model.id.leftJustified(identifierWidth) +
                      u"%1 — %2 — %3"_s.arg(model.name, model.detail, presence));
    }
    terminal.line(QString());
    terminal.line(u"* is selected. The files are in %1"_s.arg(directory));
    return ExitStatus::done;
}

int ModelsCommand::select(ModelManager &models, const LocalModel &model, Terminal &terminal)
{
    models.select(model);
    terminal.line(u"%1 is selected."_s.arg(model.name));
    if (!isPresent(model, models.directory()))
        terminal.line(u"It isn't on this machine yet. Get it with: orvane models download"_s);
    return ExitStatus::done;
}
