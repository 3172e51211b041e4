// SPDX-License-Identifier: Apache-2.0
// Parsing of model replies.
#include "Actions/AgentAction.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

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
    add("short reply", uR"({"action":"open_app","app":"Safari"})"_s);
    add("nested arguments in prose",
        u"Sure, here it is:\n```json\n{\"action\":\"press_key\",\"args\":{\"key\":\"l\","
        "\"modifiers\":[\"command\",\"shift\"]}}\n```\nDone."_s);
    add("long text", uR"({"action":"type_text","text":"%1"})"_s.arg(u"A line of text.\\n"_s.repeated(40)));
    add("200 tokens without an end", uR"({"action":"type_text","text":")"_s + u"words and "_s.repeated(100));
    return true;
}();

} // namespace

BENCHMARK_MAIN();
