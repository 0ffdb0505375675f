#pragma once

#include <QString>

#include <utility>

namespace zenvor {

/// What a host app configures the library with. Immutable; nothing is trimmed or checked: a wrong
/// token shows when the report service refuses it.
class ZenvorConfiguration
{
public:
    ZenvorConfiguration(QString token, bool shakeToOpenEnabled)
        : m_token(std::move(token))
        , m_shakeToOpenEnabled(shakeToOpenEnabled)
    {
    }

    /// The SDK token that the report service issued for this app.
    const QString &token() const { return m_token; }
    /// Whether shaking the device opens the feedback flow.
    bool shakeToOpenEnabled() const { return m_shakeToOpenEnabled; }

private:
    QString m_token;
    bool m_shakeToOpenEnabled;
};

} // namespace zenvor
