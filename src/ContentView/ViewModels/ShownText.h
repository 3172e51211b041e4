// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Formats texts that quote the model for display: complete, with bidirectional text isolated. Pure.
namespace ShownText {

// One line, with visible marks for invisible characters and `inOrder`.
QString line(const QString &text);

// The same for multi-line text; line feeds and tabs are kept.
QString lines(const QString &text);

// Isolates each right-to-left run (U+2068, U+2069) so that it does not reorder the surrounding left-to-right
// sentence. Quotation marks, brackets, dashes and line feeds separate runs. A text whose first strong
// character is right-to-left is returned unchanged.
QString inOrder(const QString &text);

} // namespace ShownText
