#pragma once

#ifdef ZENVOR_TEST_QT_SESSION
#include "platform/qt_http_session.h"
#else
#include "platform/curl_http_session.h"
#endif

namespace zenvor::test {

/// The class of session that this program tests; the same source is built once for each. What the
/// classes do not share is told apart by isQtSession, at the row that expects it.
#ifdef ZENVOR_TEST_QT_SESSION
using TestedSession = QtHttpSession;
constexpr bool isQtSession = true;
#else
using TestedSession = CurlHttpSession;
constexpr bool isQtSession = false;
#endif

} // namespace zenvor::test
