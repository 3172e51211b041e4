// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/ModelsCommand.h"

#include "OrvaneApp/CommandLine/ExitStatus.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int identifierWidth = 14;

QString presence(StoredModel::Condition condition)
{
    switch (condition) {
    case StoredModel::Condition::Missing:
        return u"not downloaded"_s;
    case StoredModel::Condition::Unusable:
        return u"its file can't be used"_s;
    case StoredModel::Condition::Plausible:
        return u"on this machine"_s;
    }
    Q_UNREACHABLE();
}

QString sentence(IdleTime::Minutes idleTime)
{
    if (!idleTime)
        return u"An idle model stays in memory."_s;
    const auto minutes = idleTime->count();
    const QString count = minutes == 1 ? u"a minute"_s : u"%1 minutes"_s.arg(minutes);
    return u"A model that has been idle for %1 is removed from memory until the next task."_s.arg(count);
}

} // namespace

int ModelsCommand::list(const ModelManager &models, IdleTime::Minutes idleTime, Terminal &terminal)
{
    for (const LocalModel &model : LocalModel::catalog()) {
        const QString mark = model == models.selected() ? u"* "_s : u"  "_s;
        const StoredModel::Condition condition = StoredModel::examine(models.path(model));
        terminal.line(mark + model.id.leftJustified(identifierWidth) +
                      u"%1 — %2 — %3"_s.arg(model.name, model.detail, presence(condition)));
    }
    terminal.line(QString());
    terminal.line(u"* is selected. The files are in %1"_s.arg(models.directory()));
    terminal.line(sentence(idleTime));
    return ExitStatus::done;
}

int ModelsCommand::select(ModelManager &models, const LocalModel &model, Terminal &terminal)
{
    models.select(model);
    terminal.line(u"%1 is selected."_s.arg(model.name));
    const StoredModel::Condition condition = StoredModel::examine(models.path(model));
    if (condition == StoredModel::Condition::Missing)
        terminal.line(u"It isn't on this machine yet. Get it with: orvane models download"_s);
    else if (condition == StoredModel::Condition::Unusable)
        terminal.line(u"Its file can't be used. Replace it with: orvane models download"_s);
    return ExitStatus::done;
}

int ModelsCommand::keep(const ModelStorage &storage, IdleTime::Minutes idleTime, Terminal &terminal)
{
    if (!IdleTime::choose(storage, idleTime)) {
        terminal.error(u"Couldn't write the settings: %1"_s.arg(storage.settingsFile));
        return ExitStatus::endedOtherwise;
    }
    terminal.line(sentence(idleTime));
    return ExitStatus::done;
}
