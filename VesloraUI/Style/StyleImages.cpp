// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/StyleImages.h"

#include "VesloraUI/Platform/Logs.h"

#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>
#include <numeric>
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

/// What a step of height one, from nothing, becomes by that blur: at the place of each weight, the sum of all
/// up to it.
std::vector<double> softStep(const std::vector<double>& weights) {
    std::vector<double> sums(weights.size());
    std::partial_sum(weights.begin(), weights.end(), sums.begin());
    return sums;
}

/// Blurs `count` values, outside of which there is nothing, and writes them `stride` bytes apart.
/// `changes` is room for one value more.
void blur(const uchar* values, int count, const std::vector<double>& step, std::vector<double>& changes,
          uchar* result, qsizetype stride) {
    // OPTIMIZATION: a row of a filled shape is nearly all alike, and each of its steps is a soft one of the
    // blurred row. The sum of those is the sum of weights at each point, with a seventh of the work, and the
    // island waits for its shadow at the start.
    std::fill(changes.begin(), changes.end(), 0);
    double* const change = changes.data();
    const double* const soft = step.data();
    const int reach = static_cast<int>(step.size() / 2);
    for (int x = 0; x <= count; ++x) {
        const int height = (x < count ? values[x] : 0) - (x > 0 ? values[x - 1] : 0);
        if (height == 0) {
            continue;
        }
        const int first = std::max(0, x - reach);
        const int last = std::min(count, x + reach + 1);
        double before = 0;
        for (int at = first; at < last; ++at) {
            const double now = height * soft[at - x + reach];
            change[at] += now - before;
            before = now;
        }
        change[last] += height - before;
    }
    double sum = 0;
    for (int x = 0; x < count; ++x, result += stride) {
        sum += change[x];
        *result = static_cast<uchar>(std::lround(std::clamp(sum, 0.0, 255.0)));
    }
}

/// One pass of a separable blur over rows; the result is turned by a quarter, so that two passes blur both
/// ways.
QImage blurredAndTurned(const QImage& source, const std::vector<double>& step) {
    QImage result(source.height(), source.width(), QImage::Format_Alpha8);
    std::vector<double> changes(static_cast<std::size_t>(source.width()) + 1);
    uchar* const bits = result.bits();
    for (int y = 0; y < source.height(); ++y) {
        blur(source.constScanLine(y), source.width(), step, changes, bits + y, result.bytesPerLine());
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
    const auto step = softStep(gaussian(sigma * scale));
    const QImage soft = tinted(blurredAndTurned(blurredAndTurned(sharp, step), step), color);
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
