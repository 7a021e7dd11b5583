// Precompiled once for every library of windows.
#pragma once

#include "pch_core.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <QWidget>
