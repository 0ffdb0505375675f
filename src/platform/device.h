#pragma once

#include <QString>

#include <optional>

namespace zenvor {

class Bundle;

/// The device that the application runs on, as its system describes it. Each call asks the system
/// afresh and takes a few microseconds up to the reading of a small file. Main thread.
class Device
{
public:
    Device() = delete;

    /// The model in general terms ("iPhone", "ThinkPad X1 Carbon"), not one specimen of it.
    static QString model();

    /// The identifier of the hardware ("iPhone15,2") or, on computers, of the architecture ("x86_64").
    static QString machine();

    static QString systemName();

    /// As the system writes it, for instance "17.4.1". Empty where the system has no versions, as a
    /// rolling distribution.
    static QString systemVersion();

    /// A UUID in upper case that stays the same for all applications of one vendor on this device, and
    /// from which the machine's own identifier cannot be computed. Absent where the system has none. The
    /// \a bundle says who the vendor is where the system does not. From any thread.
    static std::optional<QString> identifierForVendor(const Bundle &bundle);
};

} // namespace zenvor
