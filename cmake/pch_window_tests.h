// Precompiled once for every test program with windows.
#pragma once

#include "pch_windows.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
