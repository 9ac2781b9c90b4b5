// The same for files that know widgets.
#pragma once
#include "cmake/pchcore.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTreeWidget>
#include <QWidget>
