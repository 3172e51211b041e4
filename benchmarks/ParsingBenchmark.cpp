// SPDX-License-Identifier: Apache-2.0
// How long a model's reply takes to be read.
#include "Actions/AgentAction.h"

#include <benchmark/benchmark.h>

namespace {

void parseReply(benchmark::State &state, const QString &reply)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(AgentAction::parse(reply));
    state.SetBytesProcessed(state.iterations() * reply.size());
}

const bool registered = [] {
    const auto add = [](const char *name, const QString &reply) {
        benchmark::RegisterBenchmark(name, parseReply, reply);
    };
    add("short reply", QStringLiteral(R"({"action":"open_app","app":"Safari"})"));
    add("nested arguments in prose",
        QStringLiteral("Sure, here it is:\n```json\n{\"action\":\"press_key\",\"args\":{\"key\":\"l\","
                       "\"modifiers\":[\"command\",\"shift\"]}}\n```\nDone."));
    add("long text", QStringLiteral(R"({"action":"type_text","text":"%1"})")
                         .arg(QStringLiteral("A line of text.\\n").repeated(40)));
    add("200 tokens without an end",
        QStringLiteral(R"({"action":"type_text","text":")") + QStringLiteral("words and ").repeated(100));
    return true;
}();

} // namespace

BENCHMARK_MAIN();
