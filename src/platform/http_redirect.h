#pragma once

#include "platform/http_message.h"
#include "platform/url_error.h"

#include <variant>

namespace zenvor {

/// Whether an answer of that status, with a Location, is followed. Without one it is the response.
bool isRedirect(const HttpResponse &response);

/// The request that follows \a request after the redirect \a response, by the rules that HttpSession
/// states; or why there is none. What is meant for the first host only is not told to another.
std::variant<HttpRequest, UrlErrorCode> redirected(HttpRequest request, const HttpResponse &response);

} // namespace zenvor
