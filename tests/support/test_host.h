#pragma once

// The host that a test runs in: a program for each of them.
#ifdef ZENVOR_TEST_WIDGETS
#include "support/widget_host.h"
#else
#include "support/quick_host.h"
#endif

namespace zenvor::test {

#ifdef ZENVOR_TEST_WIDGETS
using TestHost = WidgetHost;
#else
using TestHost = QuickHost;
#endif

} // namespace zenvor::test
