// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QQuickImageProvider>

// Draws our symbols in the colour that the view asks for: "image://symbol/NAME?RRGGBB" or "?AARRGGBB" is
// :/symbols/NAME.svg with `currentColor` replaced, at the size asked for. An unknown name gives no image.
// Called on Qt Quick's image threads; holds no state.
class SymbolImages : public QQuickImageProvider
{
public:
    SymbolImages();

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};
