#pragma once

#include <QString>

#include <optional>

namespace zenvor {

/// How the running application identifies itself. A value, read once when main() is called.
class Bundle
{
public:
    /// The application's own bundle. On phones and Apple systems what the package says; elsewhere what
    /// the host has told Qt: the desktop file name, else the organisation domain and the application
    /// name; the application version; the property "zenvorBuild" of the application object. Works
    /// without an application object. Main thread.
    static Bundle main();

    /// In reverse domain form, "com.example.player".
    const std::optional<QString> &identifier() const { return m_identifier; }

    /// The version that users see. Absent if the application states none.
    const std::optional<QString> &version() const { return m_version; }

    /// The build number. Absent if the application states none, or states it as something else than a
    /// text.
    const std::optional<QString> &build() const { return m_build; }

    /// What names the application's maker: the organisation domain that the host has told Qt, else the
    /// identifier, else an empty text.
    QString vendor() const
    {
        return m_organizationDomain.isEmpty() ? m_identifier.value_or(QString()) : m_organizationDomain;
    }

private:
    std::optional<QString> m_identifier;
    std::optional<QString> m_version;
    std::optional<QString> m_build;
    QString m_organizationDomain;
};

} // namespace zenvor
