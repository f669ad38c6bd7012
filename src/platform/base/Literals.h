// Text literals: u"..."_s is a QString in every file that sees this.
#pragma once

#include <QString>

using namespace Qt::StringLiterals;
