#pragma once

namespace zenvor {

/// Whether the user wants screens not to move: what the host says in the application's dynamic property
/// "zenvorReducedMotion" (a bool), else the system's setting, else not. Main thread.
bool prefersReducedMotion();

/// The system's setting; false where it has none, as Linux.
bool systemPrefersReducedMotion();

} // namespace zenvor
