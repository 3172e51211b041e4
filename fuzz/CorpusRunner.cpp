// SPDX-License-Identifier: Apache-2.0
// Replays corpus files, for compilers without libFuzzer.
#include "Fuzzing.h"

#include <QDirIterator>
#include <QFile>

int main(int argumentCount, char **arguments)
{
    for (int i = 1; i < argumentCount; ++i) {
        QDirIterator files(QString::fromLocal8Bit(arguments[i]), QDir::Files);
        while (files.hasNext()) {
            QFile file(files.next());
            require(file.open(QIODevice::ReadOnly));
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                                   static_cast<std::size_t>(bytes.size()));
        }
    }
    return 0;
}
