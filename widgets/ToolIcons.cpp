#include "widgets/ToolIcons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <algorithm>
#include <array>

namespace corvane {
namespace {

// A sheet of 24 x 24 units to draw on: outlines in the text color, what matters in the accent color.
class Sheet {
 public:
  Sheet(QPainter& painter, QColor ink, QColor accent) : painter_(painter), ink_(ink), accent_(accent) {}

  void Outline(const QPainterPath& path, qreal width = 1.6) { Stroke(path, ink_, width); }
  void Accent(const QPainterPath& path, qreal width = 1.8) { Stroke(path, accent_, width); }
  void FillInk(const QPainterPath& path) { painter_.fillPath(path, ink_); }
  void FillAccent(const QPainterPath& path, qreal opacity = 1) {
    QColor color = accent_;
    color.setAlphaF(static_cast<float>(color.alphaF() * opacity));
    painter_.fillPath(path, color);
  }

 private:
  void Stroke(const QPainterPath& path, const QColor& color, qreal width) {
    painter_.strokePath(path, QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  }

  QPainter& painter_;
  QColor ink_;
  QColor accent_;
};

QPainterPath Line(std::initializer_list<QPointF> points) {
  QPainterPath path(*points.begin());
  for (const QPointF& point : points) path.lineTo(point);
  return path;
}
QPainterPath Shape(std::initializer_list<QPointF> points) {
  QPainterPath path = Line(points);
  path.closeSubpath();
  return path;
}
QPainterPath Box(qreal x, qreal y, qreal width, qreal height, qreal corner = 0) {
  QPainterPath path;
  path.addRoundedRect(x, y, width, height, corner, corner);
  return path;
}
QPainterPath Circle(qreal x, qreal y, qreal radius) {
  QPainterPath path;
  path.addEllipse(QPointF(x, y), radius, radius);
  return path;
}
QPainterPath Arc(qreal x, qreal y, qreal radius, qreal start, qreal sweep) {
  const QRectF circle(x - radius, y - radius, 2 * radius, 2 * radius);
  QPainterPath path;
  path.arcMoveTo(circle, start);
  path.arcTo(circle, start, sweep);
  return path;
}
QPainterPath Star(qreal x, qreal y, qreal radius) {
  const qreal waist = radius * 0.28;
  return Shape({{x, y - radius},
                {x + waist, y - waist},
                {x + radius, y},
                {x + waist, y + waist},
                {x, y + radius},
                {x - waist, y + waist},
                {x - radius, y},
                {x - waist, y - waist}});
}
QPainterPath Axes() { return Line({{3.5, 3}, {3.5, 20.5}, {21, 20.5}}); }
QPainterPath Cross(qreal x, qreal y, qreal arm) {
  QPainterPath path = Line({{x - arm, y}, {x + arm, y}});
  path.addPath(Line({{x, y - arm}, {x, y + arm}}));
  return path;
}
// The same shape rotated by 90 degrees about the middle of the sheet.
QPainterPath Rotated(const QPainterPath& path) {
  return QTransform().translate(12, 12).rotate(90).translate(-12, -12).map(path);
}

void DrawOpen(Sheet& s) {
  s.FillAccent(Shape({{6.5, 11}, {22, 11}, {18.5, 19.5}, {3, 19.5}}), 0.85);
  s.Outline(Line({{3, 19.5}, {3, 5.5}, {9, 5.5}, {11, 8}, {19, 8}, {19, 11}}));
  s.Outline(Shape({{6.5, 11}, {22, 11}, {18.5, 19.5}, {3, 19.5}}));
}
void DrawSave(Sheet& s) {
  s.FillAccent(Box(7, 13, 10, 7.5), 0.85);
  s.Outline(Shape({{3.5, 3.5}, {17.5, 3.5}, {20.5, 6.5}, {20.5, 20.5}, {3.5, 20.5}}));
  s.Outline(Line({{7, 20.5}, {7, 13}, {17, 13}, {17, 20.5}}));
  s.Outline(Line({{8, 3.5}, {8, 8.5}, {15, 8.5}, {15, 3.5}}));
}
void DrawClose(Sheet& s) {
  s.Outline(Line({{11.5, 20.5}, {3.5, 20.5}, {3.5, 3.5}, {20.5, 3.5}, {20.5, 11.5}}));
  s.Outline(Line({{3.5, 16}, {8.5, 10.5}, {11.5, 13.5}}));
  QPainterPath x = Line({{14.5, 14.5}, {21, 21}});
  x.addPath(Line({{21, 14.5}, {14.5, 21}}));
  s.Accent(x, 2.4);
}
void DrawInfo(Sheet& s) {
  s.Outline(Circle(12, 12, 9));
  s.Accent(Line({{12, 11}, {12, 17}}), 2.6);
  s.FillAccent(Circle(12, 7.2, 1.6));
}
void DrawHist(Sheet& s) {
  constexpr std::array<qreal, 5> kHeights{4.5, 11, 14.5, 8, 3};
  for (std::size_t i = 0; i < kHeights.size(); ++i)
    s.FillAccent(Box(5.5 + 3.1 * static_cast<qreal>(i), 19 - kHeights[i], 2.3, kHeights[i]));
  s.Outline(Axes());
}
void DrawProfile(Sheet& s) {
  s.Outline(Axes());
  QPainterPath curve({5.5, 17.5});
  curve.cubicTo(10, 17.5, 9.5, 5, 12.5, 5);
  curve.cubicTo(15.5, 5, 15, 17.5, 20.5, 17.5);
  s.Accent(curve);
}
void DrawRaster(Sheet& s) {
  s.Outline(Circle(12, 12, 9));
  s.Outline(Circle(12, 12, 5.9));
  s.FillAccent(Circle(12, 12, 3));
}
void DrawEdge(Sheet& s) {
  s.Outline(Box(3.5, 3.5, 17, 17, 1), 1.4);
  s.Accent(Star(12, 12, 7), 1.7);
}
void DrawNegative(Sheet& s) {
  s.Outline(Box(3.5, 3.5, 17, 17, 1));
  QPainterPath half = Box(12, 3.5, 8.5, 17);
  s.FillInk(half.subtracted(Circle(12, 12, 5)));
  s.FillAccent(Arc(12, 12, 5, 90, 180));
}
void DrawPseudoColor(Sheet& s) {
  constexpr std::array<qreal, 4> kShades{1.0, 0.7, 0.42, 0.18};
  for (std::size_t i = 0; i < kShades.size(); ++i)
    s.FillAccent(Box(7, 3.5 + 4.25 * static_cast<qreal>(i), 7, 4.25), kShades[i]);
  s.Outline(Box(7, 3.5, 7, 17, 0.5));
  for (qreal y = 3.5; y < 21; y += 4.25) s.Outline(Line({{16.5, y}, {19, y}}), 1.3);
}
void DrawDeconvolution(Sheet& s) {
  s.FillAccent(Circle(12, 12, 10), 0.28);
  s.FillAccent(Circle(12, 12, 6.8), 0.4);
  s.FillInk(Star(12, 12, 9));
}
void DrawLens(Sheet& s) {
  s.Outline(Circle(10, 10, 6.8));
  s.Outline(Line({{15.2, 15.2}, {20.8, 20.8}}), 2.6);
}
void DrawPlus(Sheet& s) {
  DrawLens(s);
  s.Accent(Cross(10, 10, 3.4), 2.2);
}
void DrawMinus(Sheet& s) {
  DrawLens(s);
  s.Accent(Line({{6.6, 10}, {13.4, 10}}), 2.2);
}
void DrawQuarterTurn(Sheet& s) {
  s.Outline(Box(3.5, 12.5, 8.5, 8, 0.5));
  s.Accent(Arc(10.5, 12, 8.5, 0, 90), 2.0);
  s.FillAccent(Shape({{6.2, 3.5}, {11, 0.2}, {11, 6.8}}));
}
void DrawHalfTurn(Sheet& s) {
  s.Outline(Box(8, 13.5, 8, 7, 0.5));
  s.Accent(Arc(12, 12, 8.5, 0, 180), 2.0);
  s.FillAccent(Shape({{3.5, 16.6}, {0.2, 11.8}, {6.8, 11.8}}));
}
QPainterPath FlipAxis() {
  QPainterPath axis = Line({{12, 2.5}, {12, 6}});
  axis.addPath(Line({{12, 10.2}, {12, 13.8}}));
  axis.addPath(Line({{12, 18}, {12, 21.5}}));
  return axis;
}
void DrawFlipAcross(Sheet& s) {
  s.FillInk(Shape({{9, 5.5}, {9, 18.5}, {2.5, 18.5}}));
  s.Outline(Shape({{15, 5.5}, {15, 18.5}, {21, 18.5}}), 1.4);
  s.Accent(FlipAxis(), 1.7);
}
void DrawFlipDown(Sheet& s) {
  s.FillInk(Rotated(Shape({{9, 5.5}, {9, 18.5}, {2.5, 18.5}})));
  s.Outline(Rotated(Shape({{15, 5.5}, {15, 18.5}, {21, 18.5}})), 1.4);
  s.Accent(Rotated(FlipAxis()), 1.7);
}
void DrawScale(Sheet& s) {
  s.Outline(Box(3.5, 3.5, 17, 17, 1));
  QPainterPath curve({5.5, 18.5});
  curve.cubicTo(6.5, 9, 12, 6, 18.8, 5.5);
  s.Accent(curve, 2.1);
}
void DrawFilter(Sheet& s) {
  s.FillAccent(Shape({{6, 8.5}, {18, 8.5}, {13.8, 13}, {10.2, 13}}), 0.85);
  s.Outline(Shape({{3, 4}, {21, 4}, {14, 12.5}, {14, 18.5}, {10, 20.8}, {10, 12.5}}));
}
void DrawMask(Sheet& s) {
  s.Outline(Box(3.5, 3.5, 17, 17, 1));
  const QPainterPath hole = Circle(12, 12, 5);
  s.FillAccent(Box(5, 5, 14, 14).subtracted(hole), 0.8);
  s.Outline(hole);
}
void DrawAlign(Sheet& s) {
  s.Outline(Box(2.5, 2.5, 13.5, 13.5, 0.5), 1.4);
  s.Outline(Box(8, 8, 13.5, 13.5, 0.5), 1.4);
  s.Accent(Cross(12, 12, 3), 2.0);
}
QPainterPath Layer(qreal y) { return Shape({{12, y - 4.5}, {21.5, y}, {12, y + 4.5}, {2.5, y}}); }
QPainterPath LowerLayer(qreal y) { return Line({{2.5, y}, {12, y + 4.5}, {21.5, y}}); }
void DrawCombine(Sheet& s) {
  s.FillAccent(Layer(7.5), 0.85);
  s.Outline(Layer(7.5));
  s.Outline(LowerLayer(12));
  s.Outline(LowerLayer(16.5));
}
void DrawColor(Sheet& s) {
  const QPainterPath top = Circle(12, 8.5, 5.7);
  const QPainterPath left = Circle(8, 15.2, 5.7);
  const QPainterPath right = Circle(16, 15.2, 5.7);
  s.FillAccent(top.intersected(left).united(top.intersected(right)).united(left.intersected(right)), 0.85);
  s.Outline(top, 1.4);
  s.Outline(left, 1.4);
  s.Outline(right, 1.4);
}
void DrawViewer(Sheet& s) {
  s.Outline(Box(2.5, 4, 19, 16, 1));
  s.Outline(Line({{2.8, 17}, {8.5, 11}, {12.5, 15}, {15, 12.5}, {21, 17.5}}));
  s.FillAccent(Star(16.5, 8.3, 3.4));
}
void DrawCrop(Sheet& s) {
  s.FillAccent(Box(7, 7, 10, 10), 0.5);
  s.Outline(Line({{7, 2.5}, {7, 17}, {21.5, 17}}), 1.8);
  s.Outline(Line({{2.5, 7}, {17, 7}, {17, 21.5}}), 1.8);
}
void DrawMosaic(Sheet& s) {
  s.FillAccent(Box(9, 9, 6, 6), 0.85);
  s.Outline(Box(3, 3, 12, 12, 0.5));
  s.Outline(Box(9, 9, 12, 12, 0.5));
}
void DrawAuto(Sheet& s) {
  s.Outline(Circle(12, 12, 6));
  s.Outline(Line({{12, 2}, {12, 7}}));
  s.Outline(Line({{12, 17}, {12, 22}}));
  s.Outline(Line({{2, 12}, {7, 12}}));
  s.Outline(Line({{17, 12}, {22, 12}}));
  s.FillAccent(Star(12, 12, 4.6));
}
void DrawStack(Sheet& s) {
  s.FillAccent(Layer(16), 0.85);
  s.Outline(Layer(16));
  s.Accent(Line({{12, 2}, {12, 9.5}}), 2.2);
  s.FillAccent(Shape({{12, 12.5}, {8.4, 8}, {15.6, 8}}));
}
void DrawPreserve(Sheet& s) {
  s.Outline(Box(2.5, 3, 8, 7.5, 0.5), 1.4);
  s.Outline(Box(13.5, 3, 8, 7.5, 0.5), 1.4);
  s.Outline(Line({{6.5, 11}, {10, 13.8}}), 1.4);
  s.Outline(Line({{17.5, 11}, {14, 13.8}}), 1.4);
  s.FillAccent(Box(8, 14, 8, 7.5, 0.5), 0.85);
  s.Outline(Box(8, 14, 8, 7.5, 0.5), 1.4);
}

struct Drawing {
  std::string_view key;
  void (*draw)(Sheet&);
};
constexpr Drawing kDrawings[] = {
    {"open", DrawOpen},
    {"save", DrawSave},
    {"close", DrawClose},
    {"info", DrawInfo},
    {"hist", DrawHist},
    {"profile", DrawProfile},
    {"raster", DrawRaster},
    {"edge", DrawEdge},
    {"negative", DrawNegative},
    {"pcolor", DrawPseudoColor},
    {"deconv", DrawDeconvolution},
    {"plus", DrawPlus},
    {"minus", DrawMinus},
    {"halfpi", DrawQuarterTurn},
    {"pi", DrawHalfTurn},
    {"vert", DrawFlipAcross},
    {"hor", DrawFlipDown},
    {"scale", DrawScale},
    {"filter", DrawFilter},
    {"mask", DrawMask},
    {"align", DrawAlign},
    {"combine", DrawCombine},
    {"color", DrawColor},
    {"corvane", DrawViewer},
    {"crop", DrawCrop},
    {"mosaic", DrawMosaic},
    {"auto", DrawAuto},
    {"stack", DrawStack},
    {"preserve", DrawPreserve},
};

constexpr auto kKeys = [] {
  std::array<std::string_view, std::size(kDrawings)> keys;
  for (std::size_t i = 0; i < keys.size(); ++i) keys[i] = kDrawings[i].key;
  return keys;
}();

class DrawnIcon : public QIconEngine {
 public:
  explicit DrawnIcon(void (*draw)(Sheet&)) : draw_(draw) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const bool disabled = mode == QIcon::Disabled;
    const QPalette palette = QGuiApplication::palette();
    const QColor ink = palette.color(disabled ? QPalette::Disabled : QPalette::Active, QPalette::ButtonText);
    const QColor accent = disabled ? ink : QColor(0x2d, 0x8c, 0xe8);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const qreal size = std::min(rect.width(), rect.height());
    painter->translate(rect.x() + (rect.width() - size) / 2, rect.y() + (rect.height() - size) / 2);
    painter->scale(size / 24, size / 24);
    if (disabled) painter->setOpacity(0.55);
    Sheet sheet(*painter, ink, accent);
    draw_(sheet);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new DrawnIcon(draw_); }

 private:
  void (*draw_)(Sheet&);
};

}  // namespace

QIcon ToolIcon(std::string_view key) {
  const auto* drawing = std::ranges::find(kDrawings, key, &Drawing::key);
  return drawing == std::end(kDrawings) ? QIcon() : QIcon(new DrawnIcon(drawing->draw));
}

std::span<const std::string_view> ToolIconKeys() { return kKeys; }

}  // namespace corvane
