// Precompiled once for every test program of a windowless core.
#pragma once

#include "pch_core.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
