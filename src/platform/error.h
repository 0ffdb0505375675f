#pragma once

#include <QString>

#include <exception>

namespace zenvor {

/// A failure of an asynchronous operation, thrown as a value. Its description is meant for the user
/// of the app, stands in English and names no token, text or address.
class Error : public std::exception
{
public:
    virtual QString localizedDescription() const = 0;
    /// For debuggers only: what the library tells anybody is the description.
    const char *what() const noexcept override { return "zenvor::Error"; }
};

/// The user-readable description of any exception: that of an Error, else what() read as UTF-8.
QString localizedDescription(const std::exception &error);

} // namespace zenvor
