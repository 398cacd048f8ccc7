// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/StyleImages.h"

#include "VesloraUI/Platform/Logs.h"

#include <QPainter>
#include <QSvgRenderer>

#include <cmath>
#include <vector>

namespace veslora {

namespace {

std::vector<double> gaussian(double sigma) {
    const int reach = static_cast<int>(std::ceil(3 * sigma));
    std::vector<double> weights;
    double sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        weights.push_back(std::exp(-i * i / (2 * sigma * sigma)));
        sum += weights.back();
    }
    for (double& weight : weights) {
        weight /= sum;
    }
    return weights;
}

/// One pass of a separable blur over rows; the result is turned by a quarter, so that two passes blur both
/// ways.
QImage blurredAndTurned(const QImage& source, const std::vector<double>& weights) {
    QImage result(source.height(), source.width(), QImage::Format_Alpha8);
    const int reach = static_cast<int>(weights.size() / 2);
    for (int y = 0; y < source.height(); ++y) {
        const uchar* row = source.constScanLine(y);
        for (int x = 0; x < source.width(); ++x) {
            double sum = 0;
            for (int i = -reach; i <= reach; ++i) {
                const int at = x + i;
                sum += at < 0 || at >= source.width()
                           ? 0
                           : row[at] * weights[static_cast<std::size_t>(i + reach)];
            }
            result.scanLine(x)[y] = static_cast<uchar>(std::lround(sum));
        }
    }
    return result;
}

QImage tinted(const QImage& alpha, const QColor& color) {
    QImage result(alpha.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(color);
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, alpha.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    return result;
}

QImage symbol(const QString& name, const QColor& color, const QSize& size) {
    QImage drawn(size.isEmpty() ? QSize(24, 24) : size, QImage::Format_ARGB32_Premultiplied);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    QSvgRenderer renderer(QStringLiteral(":/symbols/%1.svg").arg(name));
    if (!renderer.isValid()) {
        qCWarning(Logs::views, "there is no symbol %s", qUtf8Printable(name));
    }
    renderer.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(drawn.rect(), color);
    return drawn;
}

/// Of a rounded rectangle just large enough that its middle can be stretched.
QImage shadow(double radius, double sigma, int margin, int border, const QColor& color) {
    const int body = 2 * (border - margin) + 8;
    return StyleImages::softRectangle(body, body, radius, sigma, margin, 1, color);
}

} // namespace

StyleImages::StyleImages() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage StyleImages::softRectangle(double width, double height, double radius, double sigma, int margin,
                                  double scale, const QColor& color) {
    // A working border of three deviations keeps the blur from seeing an edge that is not there.
    const double border = std::max<double>(margin, 3 * sigma) * scale;
    QImage sharp(static_cast<int>(std::ceil(width * scale + 2 * border)),
                 static_cast<int>(std::ceil(height * scale + 2 * border)), QImage::Format_Alpha8);
    sharp.fill(0);
    QPainter painter(&sharp);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::black);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(QRectF(border, border, width * scale, height * scale), radius * scale,
                            radius * scale);
    painter.end();
    const auto weights = gaussian(sigma * scale);
    const QImage soft = tinted(blurredAndTurned(blurredAndTurned(sharp, weights), weights), color);
    const int cut = static_cast<int>(std::lround(border - margin * scale));
    return soft.copy(cut, cut, soft.width() - 2 * cut, soft.height() - 2 * cut);
}

QImage StyleImages::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const QStringList parts = id.split(QLatin1Char('/'));
    QImage image;
    if (parts.size() == 1 && parts[0] == QLatin1String("shadow")) {
        image = shadow(16, 10, shadowMargin, shadowBorder, QColor(0, 0, 0, 128));
    } else if (parts.size() == 1 && parts[0] == QLatin1String("ghost-shadow")) {
        image = shadow(6, 8, ghostShadowMargin, ghostShadowBorder, QColor(0, 0, 0, 153));
    } else if (parts.size() == 3 && parts[0] == QLatin1String("glow")) {
        QColor color(QLatin1Char('#') + parts[2]);
        color.setAlphaF(0.6F);
        const double side = parts[1].toDouble();
        image = softRectangle(side, side, 1.5, 3, 9, 2, color);
    } else if (parts.size() == 3 && parts[0] == QLatin1String("symbol")) {
        image = symbol(parts[1], QColor(QLatin1Char('#') + parts[2]), requestedSize);
    }
    if (image.isNull()) {
        qCWarning(Logs::views, "there is no image %s", qUtf8Printable(id));
    }
    if (size) {
        *size = image.size();
    }
    return image;
}

} // namespace veslora
