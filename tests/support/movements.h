#pragma once

#include <QList>
#include <QQuaternion>
#include <QVector3D>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <random>

// Movements of a device, and what its accelerometer reads of them.
namespace zenvor::test {

constexpr double pi = std::numbers::pi;
constexpr double g = 9.81; // m/s2
constexpr double shakeStart = 1; // seconds

/// How a device moves, over the time in seconds: its acceleration in the world's frame (z is up) without
/// gravity, and how it is held.
struct Movement
{
    std::function<QVector3D(double)> acceleration = [](double) {
        return QVector3D();
    };
    std::function<QQuaternion(double)> orientation = [](double) {
        return QQuaternion();
    };
    float noise = 0.3F;
};

using Random = std::mt19937;
using Maker = std::function<Movement(Random &)>;

inline QVector3D vector(double x, double y, double z)
{
    return {float(x), float(y), float(z)};
}

inline double between(Random &random, double low, double high)
{
    return low + (high - low) * double(random()) / 4294967295.0;
}

inline QVector3D anyDirection(Random &random)
{
    const double z = between(random, -1, 1);
    const double angle = between(random, 0, 2 * pi);
    const double radius = std::sqrt(1 - z * z);
    return vector(radius * std::cos(angle), radius * std::sin(angle), z);
}

inline QQuaternion turned(const QVector3D &axis, double radians)
{
    return QQuaternion::fromAxisAndAngle(axis, float(radians * 180 / pi));
}

inline std::function<QQuaternion(double)> heldAnyhow(Random &random)
{
    const QQuaternion pose = turned(anyDirection(random), between(random, 0, 2 * pi));
    return [pose](double) {
        return pose;
    };
}

// A single push, half a sine.
inline double push(double t, double start, double length)
{
    return t < start || t > start + length ? 0 : std::sin(pi * (t - start) / length);
}

// What a blow leaves behind.
inline double ringing(double t, double start, double frequency, double decay)
{
    return t < start ? 0 : std::exp((start - t) / decay) * std::sin(2 * pi * frequency * (t - start));
}

inline Maker shake(double frequency, double strength, const QVector3D &direction, double from = shakeStart)
{
    return [=](Random &random) {
        const auto acceleration = [=](double t) {
            const double wave = t < from ? 0 : std::sin(2 * pi * frequency * (t - from));
            return direction * float(strength * g * wave);
        };
        return Movement{acceleration, heldAnyhow(random)};
    };
}

// To and fro are not quite opposite.
inline Movement bentShake(Random &random)
{
    const auto acceleration = [](double t) {
        const double wave = t < shakeStart ? 0 : std::sin(8 * pi * (t - shakeStart));
        return (wave > 0 ? vector(1, 0, 0) : vector(0.7, 0.7, 0)) * float(2 * g * wave);
    };
    return {acceleration, heldAnyhow(random)};
}

// Each swing has its own speed, strength and, within limits, direction; the wrist turns along.
inline Movement humanShake(Random &random)
{
    struct Swing
    {
        double start, length;
        QVector3D peak;
    };
    const QVector3D line = anyDirection(random);
    QList<Swing> swings;
    double start = shakeStart;
    for (int i = 0; i < 12; ++i) {
        const double length = 0.5 / between(random, 2.5, 5);
        const double strength = between(random, 1.8, 3) * (i % 2 ? -g : g);
        swings << Swing{start, length, (line + 0.15F * anyDirection(random)).normalized() * float(strength)};
        start += length;
    }
    const auto acceleration = [swings](double t) {
        QVector3D sum;
        for (const Swing &swing : swings)
            sum += swing.peak * float(push(t, swing.start, swing.length));
        return sum;
    };
    const auto held = heldAnyhow(random)(0);
    const QVector3D axis = anyDirection(random);
    const auto orientation = [=](double t) {
        return turned(axis, 0.15 * std::sin(18 * t)) * held;
    };
    return {acceleration, orientation, 0.8F};
}

struct Carried
{
    double swing; // of the arm or leg, in radians to each side
    double radius; // metres from its joint
    double slap; // m/s2, of a device that is loose in a pocket
};

constexpr Carried tight{0, 0, 0};
constexpr Carried inHand{0.5, 0.4, 0};
constexpr Carried inPocket{0.4, 0.3, 5};

// Adds to the steps of a body what the limb that carries the device makes of them.
inline Movement carry(Random &random, const Carried &carried, double steps,
                      std::function<QVector3D(double)> body)
{
    const double rate = pi * steps; // a swing to and fro takes two steps
    const double phase = between(random, -0.6, 0.6);
    const QVector3D slap = anyDirection(random) * float(carried.slap);
    const auto angle = [=](double t) {
        return carried.swing * std::sin(rate * t + phase);
    };
    const auto acceleration = [=](double t) {
        const double speed = carried.swing * rate * std::cos(rate * t + phase);
        const double inward = speed * speed * carried.radius;
        const double across = -angle(t) * rate * rate * carried.radius;
        const double sine = std::sin(angle(t));
        const double cosine = std::cos(angle(t));
        const QVector3D limb = vector(across * cosine - inward * sine, 0, across * sine + inward * cosine);
        return body(t) + limb + slap * float(ringing(std::fmod(t, 1 / steps), 0, 9, 0.06));
    };
    const auto held = heldAnyhow(random)(0);
    return {acceleration, [=](double t) { return turned({0, 1, 0}, -angle(t)) * held; }, 0.5F};
}

// The foot carries the body for as long as makes up for the free fall between two steps.
inline Maker running(double impact, double steps, const Carried &carried)
{
    return [=](Random &random) {
        const double stride = 1 / steps;
        const double contact = stride * pi / 2 / impact;
        const double shift = between(random, 0, stride);
        return carry(random, carried, steps, [=](double t) {
            const double step = std::fmod(t + shift, stride);
            const double foot = push(step, 0, contact);
            const double braking = step < contact ? -0.4 * g * std::sin(2 * pi * step / contact) : 0;
            const double heel = 0.5 * g * push(step, 0, 0.03);
            return vector(braking, 0.2 * g * foot * std::sin(pi * steps * t), impact * g * foot + heel - g);
        });
    };
}

// One after the other, as a device in a bag gets them.
inline Maker blows(int count, double strength, double interval)
{
    return [=](Random &random) {
        const QVector3D direction = anyDirection(random) * float(strength);
        const double frequency = between(random, 20, 40);
        const auto acceleration = [=](double t) {
            double sum = 0;
            for (int i = 0; i < count; ++i)
                sum += ringing(t, 1 + i * interval, frequency, 0.025);
            return direction * float(sum);
        };
        return Movement{acceleration, heldAnyhow(random)};
    };
}

struct Reading
{
    quint64 time; // microseconds
    double x, y, z;
};

inline double secondsOf(const Reading &reading)
{
    return double(reading.time) / 1e6;
}

inline QList<Reading> record(const Movement &movement, double from, double to, double rate, Random &random)
{
    std::normal_distribution<float> noise(0, movement.noise);
    QList<Reading> readings;
    const double phase = between(random, 0, 1);
    for (int i = 0; from + (i + phase) / rate < to; ++i) {
        const double t = from + (i + phase) / rate;
        const QVector3D real = movement.acceleration(t) + vector(0, 0, g);
        const QVector3D seen = movement.orientation(t).conjugated().rotatedVector(real)
            + QVector3D(noise(random), noise(random), noise(random));
        readings << Reading{quint64(t * 1e6), seen.x(), seen.y(), seen.z()};
    }
    return readings;
}

inline QList<Reading> clearShake(double from = 0, double to = shakeStart + 0.8)
{
    Random random(1);
    return record(shake(3, 2, {1, 0, 0})(random), from, to, 50, random);
}

} // namespace zenvor::test
