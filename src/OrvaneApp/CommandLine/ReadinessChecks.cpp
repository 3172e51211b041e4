// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/ReadinessChecks.h"

#include "Desktop/AbandonableJob.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;
using ReadinessChecks::ModelFile;

namespace {

ModelFile look(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return {};
    return {true, file.size(), GgufFile::examine(path)};
}

QString megabytes(qint64 bytes)
{
    constexpr qint64 megabyte = 1'000'000;
    return u"%1 MB"_s.arg((bytes + megabyte - 1) / megabyte);
}

} // namespace

QCoro::Task<DiagnosticCheck> ReadinessChecks::model(LocalModel model, QString path)
{
    const auto job = [path] { return look(path); };
    const std::optional<ModelFile> file = co_await AbandonableJob::run(u"doctor.model"_s, job);
    co_return modelCheck(model, path, file);
}

QCoro::Task<DiagnosticCheck> ReadinessChecks::engine(std::function<LlamaLibrary::Description()> describe)
{
    const std::optional<LlamaLibrary::Description> description =
        co_await AbandonableJob::run(u"doctor.llama"_s, describe);
    co_return engineCheck(description);
}

DiagnosticCheck ReadinessChecks::modelCheck(const LocalModel &model, const QString &path,
                                            const std::optional<ModelFile> &file)
{
    const DiagnosticCheck check{modelIdentifier, u"Model"_s};
    if (!file)
        return check.broken(u"The disk with %1 doesn't answer."_s.arg(path),
                            u"Look for a network drive that doesn't answer."_s);
    if (!file->exists)
        return check.absent(u"%1 isn't on this machine yet."_s.arg(model.name),
                            u"Get it with: orvane models download"_s);
    if (file->verdict != GgufFile::Verdict::Plausible)
        return check.broken(u"%1 can't be used. %2"_s.arg(model.name, GgufFile::explanation(file->verdict)),
                            u"Replace it with: orvane models download"_s);
    return check.working(u"%1 is on this machine (%2)."_s.arg(model.name, megabytes(file->bytes)));
}

DiagnosticCheck ReadinessChecks::engineCheck(const std::optional<LlamaLibrary::Description> &description)
{
    const DiagnosticCheck check{u"llama"_s, u"llama.cpp"_s};
    if (!description)
        return check.broken(u"It doesn't find out in time what it can compute on."_s,
                            u"Restart the computer; the graphics driver may be stuck."_s);
    if (description->devices.isEmpty())
        return check.broken(u"%1 has nothing to compute on."_s.arg(description->build),
                            u"Install llama.cpp's part for the processor, or build Orvane with ./run."_s);
    return check.working(u"%1, on %2."_s.arg(description->build, description->devices.join(u", "_s)));
}
