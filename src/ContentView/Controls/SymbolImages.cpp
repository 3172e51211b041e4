// SPDX-License-Identifier: Apache-2.0
#include "ContentView/Controls/SymbolImages.h"

#include <QColor>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace {

constexpr int standardSize = 24; // if the view requests no size

// SVG colours have no alpha; it is applied when painting.
QByteArray coloured(const QByteArray &svg, const QColor &colour)
{
    QByteArray result = svg;
    return result.replace("currentColor", colour.name(QColor::HexRgb).toLatin1());
}

} // namespace

SymbolImages::SymbolImages() : QQuickImageProvider(Image) {}

QImage SymbolImages::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const QString name = id.section(u'?', 0, 0);
    const QColor colour(u'#' + id.section(u'?', 1));
    QFile file(u":/symbols/%1.svg"_s.arg(name));
    if (!colour.isValid() || !file.open(QIODevice::ReadOnly))
        return {};
    QImage image(requestedSize.isEmpty() ? QSize(standardSize, standardSize) : requestedSize,
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(coloured(file.readAll(), colour)).render(&painter);
    // Applied afterwards, so that overlapping shapes are not darker.
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(image.rect(), QColor(0, 0, 0, colour.alpha()));
    *size = image.size();
    return image;
}
