// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/LinuxScripting.h"

#include "Base/Text.h"
#include "Scripting/ScriptError.h"
#include "Scripting/ScriptInterpreter.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <utility>
#include <vector>

namespace {

// Asks one host after the other; the first that understands a command carries it out.
class Hosts : public ScriptHost
{
public:
    explicit Hosts(std::vector<ScriptHost *> hosts) : m_hosts(std::move(hosts)) {}

    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command) override
    {
        std::optional<ScriptValue> answer;
        for (ScriptHost *host : m_hosts) {
            if (!answer)
                answer = co_await host->perform(command);
        }
        co_return answer;
    }

private:
    std::vector<ScriptHost *> m_hosts;
};

} // namespace

LinuxScripting::LinuxScripting(ClipboardText &clipboard) : m_services(std::make_shared<Services>(clipboard))
{
}

LinuxScripting::~LinuxScripting()
{
    m_end.request_stop();
}

void LinuxScripting::interrupt()
{
    m_end.request_stop();
    m_end = std::stop_source();
}

QCoro::Task<ScriptOutcome> LinuxScripting::run(QString source, ScriptHost &host)
{
    const std::shared_ptr<Services> services = m_services;
    Hosts hosts({&services->clipboard, &services->look, &services->notifications, &services->players,
                 &services->sound, &services->trash, &host});
    ScriptOutcome outcome;
    try {
        const ScriptValue result = co_await ScriptInterpreter::run(source, hosts, m_end.get_token());
        outcome.text = Text::cleaned(ScriptCoercion::resultText(result));
    } catch (const ScriptError &error) {
        outcome.ending = ScriptOutcome::Ending::Failed;
        outcome.text = Text::cleaned(error.errorDescription());
    }
    co_return outcome;
}
