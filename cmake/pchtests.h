// The same for tests.
#pragma once
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "cmake/pchwidgets.h"
