// SPDX-License-Identifier: Apache-2.0
//
// Prints the application's system prompt, for check_system_prompt.py.

#include "Agent/SystemPrompt.h"

#include <cstdio>

int main()
{
    const QByteArray text = SystemPrompt::text().toUtf8();
    return std::fwrite(text.constData(), 1, std::size_t(text.size()), stdout) == std::size_t(text.size()) ? 0
                                                                                                          : 1;
}
