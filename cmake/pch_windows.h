// Precompiled by every library of windows.
#pragma once

#include <QtWidgets>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
