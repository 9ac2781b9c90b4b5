// The same for tests.
#pragma once
#include "cmake/pchwidgets.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>
