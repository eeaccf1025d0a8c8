#include "widgets/Emblem.h"

#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <cstdint>

namespace corvane {
namespace {

constexpr int kStars = 130;
constexpr QRgb kStarColors[] = {0xffffffff, 0xffcfe0ff, 0xffffe9c8, 0xffffd2b0};
constexpr QRgb kSkyTop = 0xff080a18;
constexpr QRgb kSkyBottom = 0xff1a2040;

// The galaxy: glows around one point, tilted and seen from the side.
struct Glow {
  qreal radius;  // of the galaxy's
  QRgb color;
};
constexpr Glow kGalaxy[] = {{1, 0x6e7896ff}, {0.62, 0x82bebeff}, {0.30, 0xf0ffecc8}};
constexpr int kTilt = -24;
constexpr qreal kFlatness = 0.36;

// Of the side of the icon.
constexpr qreal kIconCorner = 0.2;
constexpr qreal kIconGalaxy = 0.48;

constexpr int kDrawingSide = 128;
constexpr char kDrawingStart[] =
    "<svg xmlns='http://www.w3.org/2000/svg' width='128' height='128' viewBox='0 0 128 128'>\n"
    "<linearGradient id='sky' x2='0' y2='1'>"
    "<stop stop-color='%1'/><stop offset='1' stop-color='%2'/></linearGradient>\n"
    "<rect width='128' height='128' rx='%3' fill='url(#sky)'/>\n"
    "<g transform='translate(64 64) rotate(%4) scale(1 %5)'>\n";
constexpr char kDrawnGlow[] =
    "<radialGradient id='glow%1' gradientUnits='userSpaceOnUse' cx='0' cy='0' r='%4'>"
    "<stop stop-color='%2' stop-opacity='%3'/><stop offset='1' stop-color='%2' "
    "stop-opacity='0'/></radialGradient>\n"
    "<circle r='%4' fill='url(#glow%1)'/>\n";

// A repeatable scatter: the sky is the same at every start.
class Scatter {
 public:
  qreal Next() {
    state_ = state_ * 1664525u + 1013904223u;
    return (state_ >> 8) / 16777216.0;
  }

 private:
  std::uint32_t state_ = 20260u;
};

void PaintSky(QPainter& painter, const QRectF& area) {
  QLinearGradient sky(area.topLeft(), area.bottomLeft());
  sky.setColorAt(0, QColor::fromRgba(kSkyTop));
  sky.setColorAt(1, QColor::fromRgba(kSkyBottom));
  painter.fillRect(area, sky);
}

void PaintGlow(QPainter& painter, qreal radius, const QColor& color) {
  QRadialGradient glow(QPointF(0, 0), radius);
  glow.setColorAt(0, color);
  QColor edge = color;
  edge.setAlpha(0);
  glow.setColorAt(1, edge);
  painter.setBrush(glow);
  painter.drawEllipse(QPointF(0, 0), radius, radius);
}

void PaintGalaxy(QPainter& painter, const QPointF& center, qreal radius) {
  painter.save();
  painter.setPen(Qt::NoPen);
  painter.translate(center);
  painter.rotate(kTilt);
  painter.scale(1, kFlatness);
  for (const Glow& glow : kGalaxy) PaintGlow(painter, radius * glow.radius, QColor::fromRgba(glow.color));
  painter.restore();
}

void PaintStars(QPainter& painter, const QRectF& area) {
  Scatter scatter;
  painter.setPen(Qt::NoPen);
  for (int i = 0; i < kStars; ++i) {
    const QPointF place(area.left() + scatter.Next() * area.width(),
                        area.top() + scatter.Next() * area.height());
    const qreal brightness = scatter.Next();
    QColor color(kStarColors[static_cast<int>(scatter.Next() * 4)]);
    color.setAlphaF(0.25 + 0.75 * brightness * brightness);
    painter.setBrush(color);
    const qreal radius = 0.4 + 1.2 * brightness * brightness * brightness;
    painter.drawEllipse(place, radius, radius);
  }
}

// The seven stars of a small crow, joined as in an atlas.
void PaintConstellation(QPainter& painter, const QRectF& area) {
  const QPointF stars[] = {{0.70, 0.22}, {0.78, 0.34}, {0.90, 0.30}, {0.86, 0.52}, {0.73, 0.50}};
  QPainterPath lines;
  const auto at = [&](const QPointF& star) {
    return QPointF(area.left() + star.x() * area.width(), area.top() + star.y() * area.height());
  };
  lines.moveTo(at(stars[0]));
  for (const int next : {1, 2, 3, 4, 1}) lines.lineTo(at(stars[next]));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(160, 190, 255, 110), 1));
  painter.drawPath(lines);
  painter.setPen(Qt::NoPen);
  for (const QPointF& star : stars) {
    painter.save();
    painter.translate(at(star));
    PaintGlow(painter, 9, QColor(170, 200, 255, 120));
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(0, 0), 2.2, 2.2);
    painter.restore();
  }
}

void PaintText(QPainter& painter, const QRectF& area, const QString& text, int pixelSize, qreal spacing,
               const QColor& color, int flags) {
  QFont font = painter.font();
  font.setPixelSize(pixelSize);
  font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
  painter.setFont(font);
  painter.setPen(color);
  painter.drawText(area, flags, text);
}

}  // namespace

QPixmap SplashPicture(QSize size, qreal pixelRatio) {
  QPixmap picture(size * pixelRatio);
  picture.setDevicePixelRatio(pixelRatio);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF area(QPointF(0, 0), QSizeF(size));
  PaintSky(painter, area);
  PaintGalaxy(painter, QPointF(area.width() * 0.32, area.height() * 0.40), area.width() * 0.27);
  PaintStars(painter, area.adjusted(0, 0, 0, -area.height() * 0.34));
  PaintConstellation(painter, area);
  const QRectF text = area.adjusted(28, 0, -28, -24);
  PaintText(painter, text.adjusted(0, 0, 0, -26), "Corvane", 42, 4, QColor(240, 244, 255),
            Qt::AlignLeft | Qt::AlignBottom);
  PaintText(painter, text, "Image processor for astronomy", 15, 0.5, QColor(180, 192, 220),
            Qt::AlignLeft | Qt::AlignBottom);
  PaintText(painter, text, "3.211", 15, 0.5, QColor(180, 192, 220), Qt::AlignRight | Qt::AlignBottom);
  painter.setPen(QPen(QColor(255, 255, 255, 40), 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(area.adjusted(0.5, 0.5, -0.5, -0.5));
  return picture;
}

QIcon ProgramIcon() {
  QIcon icon;
  for (const int side : {16, 32, 48, 128}) icon.addPixmap(QPixmap::fromImage(ProgramPicture(side)));
  return icon;
}

QImage ProgramPicture(int side) {
  QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath shape;
  shape.addRoundedRect(QRectF(0, 0, side, side), side * kIconCorner, side * kIconCorner);
  painter.setClipPath(shape);
  PaintSky(painter, QRectF(0, 0, side, side));
  PaintGalaxy(painter, QPointF(side * 0.5, side * 0.5), side * kIconGalaxy);
  return picture;
}

QString ProgramDrawing() {
  const auto name = [](QRgb color) { return QColor(color).name(); };
  QString text = QString(kDrawingStart)
                     .arg(name(kSkyTop), name(kSkyBottom))
                     .arg(kDrawingSide * kIconCorner)
                     .arg(kTilt)
                     .arg(kFlatness);
  for (const Glow& glow : kGalaxy)
    text += QString(kDrawnGlow)
                .arg(&glow - kGalaxy)
                .arg(name(glow.color))
                .arg(qAlpha(glow.color) / 255.0)
                .arg(kDrawingSide * kIconGalaxy * glow.radius);
  return text + "</g>\n</svg>\n";
}

}  // namespace corvane
