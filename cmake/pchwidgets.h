// The same for files that know widgets.
#pragma once
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTreeWidget>
#include <QWidget>

#include "cmake/pchcore.h"
