#pragma once

#include <QPainterPath>

namespace zenvor {

/// The drawings are made on a square of this side.
constexpr qreal symbolSize = 24;

/// The outline to fill; empty for an unknown name.
QPainterPath symbolPath(const QString &name);

} // namespace zenvor
