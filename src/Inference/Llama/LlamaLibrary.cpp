// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/LlamaLibrary.h"

#include <ggml-backend.h>
#include <llama.h>

#include <array>
#include <mutex>
#include <string_view>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// The folder of the plug-in back ends; empty if they are linked in. By default an older llama.cpp loads none,
// and a newer one also those in the current folder, where anyone may have put them.
constexpr std::string_view backEndFolder = ORVANE_LLAMA_BACK_ENDS;

void loadBackEnds()
{
    if (!backEndFolder.empty())
        ggml_backend_load_all_from_path(backEndFolder.data());
}

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

void LlamaLibrary::prepareEnvironment()
{
    constexpr std::array<std::pair<const char *, const char *>, 2> settings{{
        // OpenMP spin time in milliseconds.
        {"KMP_BLOCKTIME", "200"},
        // Otherwise ggml's terminate handler forks a debugger to print a backtrace.
        {"GGML_NO_BACKTRACE", "1"},
    }};
    for (const auto &[name, value] : settings) {
        if (!qEnvironmentVariableIsSet(name))
            qputenv(name, value);
    }
}

void LlamaLibrary::initialise()
{
    static std::once_flag loaded;
    std::call_once(loaded, loadBackEnds);
    llama_backend_init();
}

LlamaLibrary::Description LlamaLibrary::describe()
{
    initialise();
    Description description{build(), {}};
    for (std::size_t i = 0; i < ggml_backend_dev_count(); ++i)
        description.devices.append(described(ggml_backend_dev_get(i)));
    return description;
}
