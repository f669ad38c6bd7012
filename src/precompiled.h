// Headers that nearly every file of the system takes; compiled once per room.
#pragma once

#include "platform/base/Literals.h"

#include <QList>
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
#ifdef QT_GUI_LIB
#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#endif
