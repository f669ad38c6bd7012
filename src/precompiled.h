// Headers that nearly every file of the system takes; compiled once per floor.
#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QList>
#include <QPainter>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>
