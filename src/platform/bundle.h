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

private:
    std::optional<QString> m_identifier;
    std::optional<QString> m_version;
    std::optional<QString> m_build;
};

} // namespace zenvor
