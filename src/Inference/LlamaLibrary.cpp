// SPDX-License-Identifier: Apache-2.0
#include "Inference/LlamaLibrary.h"

#include <ggml-backend.h>
#include <llama.h>

using namespace Qt::StringLiterals;

namespace {

QString build()
{
    const QString version = QString::fromUtf8(ggml_version());
    const QString commit = QString::fromUtf8(ggml_commit());
    const bool isCommitKnown = !commit.isEmpty() && commit != "unknown"_L1;
    return isCommitKnown ? u"ggml %1, commit %2"_s.arg(version, commit) : u"ggml %1"_s.arg(version);
}

QString described(ggml_backend_dev_t device)
{
    const QString name = QString::fromUtf8(ggml_backend_dev_name(device));
    const QString description = QString::fromUtf8(ggml_backend_dev_description(device)).trimmed();
    return description.isEmpty() || description == name ? name : u"%1 (%2)"_s.arg(name, description);
}

} // namespace

LlamaLibrary::Description LlamaLibrary::describe()
{
    llama_backend_init();
    Description description{build(), {}};
    for (std::size_t i = 0; i < ggml_backend_dev_count(); ++i)
        description.devices.append(described(ggml_backend_dev_get(i)));
    return description;
}
