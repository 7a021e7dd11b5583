// Precompiled by every windowless library.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>
