// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <QByteArrayList>
#include <QElapsedTimer>

#include <memory>

// What a clipboard holds: the data of each format, in the order of its owner. A plain value.
struct ClipboardContent
{
    QByteArrayList formats;
    QList<QByteArray> data;
};

// Which of a clipboard's formats are read. Pure functions.
namespace ClipboardFormats {

using Choice = QByteArrayList (*)(const QByteArrayList &formats);

QByteArrayList all(const QByteArrayList &formats);

// The best one that is plain text; none if there is none.
QByteArrayList text(const QByteArrayList &formats);

} // namespace ClipboardFormats

// A content that this program hands out, and who reads its text. Shared by its deliveries. Thread: main.
class ClipboardOffer : public std::enable_shared_from_this<ClipboardOffer>
{
public:
    // `writer` serves one reader at a time.
    ClipboardOffer(const ClipboardContent &content, std::shared_ptr<BoundedQueue> writer);

    // Whether clipboard managers may record the content.
    enum class Recording { Allowed, Unwanted };

    static std::shared_ptr<ClipboardOffer> ofText(const QString &text, Recording recording,
                                                  std::shared_ptr<BoundedQueue> writer);

    const ClipboardContent &content() const { return m_content; }

    // Writes the data of this format to the pipe and closes it, which tells the reader that this is the end.
    // Returns whether all has been read, within five seconds.
    QCoro::Task<bool> deliver(QByteArray format, int descriptor);

    // Whether any format is plain text.
    bool hasText() const;

    // Forgets who has read the text so far.
    void expectReader();

    // Whether the text has been read completely since, and by nobody a moment ago: some applications read
    // more than once.
    bool isRead() const;

    // Whether something else is in the clipboard.
    bool isReplaced = false;

private:
    struct Readings
    {
        int underWay = 0;
        int complete = 0;
        QElapsedTimer sinceLast;
    };

    const ClipboardContent m_content;
    const std::shared_ptr<BoundedQueue> m_writer;
    std::shared_ptr<Readings> m_readings = std::make_shared<Readings>();
};
