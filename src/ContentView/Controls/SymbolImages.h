// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QQuickImageProvider>

// Draws the program's symbols: "image://symbol/NAME?RRGGBB" or "?AARRGGBB" is :/symbols/NAME.svg with
// `currentColor` replaced, at the requested size. Returns a null image for an unknown name. Called on Qt
// Quick's image threads; stateless.
class SymbolImages : public QQuickImageProvider
{
public:
    SymbolImages();

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};
