#pragma once

#include <QString>

#include <optional>

namespace fenrow {

// Whether a language model can answer, and if not, why. Drives what the
// user is told; the program works by hand either way.
struct EngineAvailability {
    // `modelUnusable`: the chosen model file cannot be loaded.
    enum class Reason { deviceNotEligible, appleIntelligenceNotEnabled, modelNotReady, frameworkUnavailable, modelUnusable };

    // Available, or unavailable for a reason. Two unavailable values are
    // equal only when their reasons are.
    class Status {
    public:
        static Status available() { return Status(std::nullopt); }
        static Status unavailable(Reason reason) { return Status(reason); }

        bool isAvailable() const { return !m_reason.has_value(); }
        std::optional<Reason> reason() const { return m_reason; }

        friend bool operator==(const Status &, const Status &) = default;

    private:
        explicit Status(std::optional<Reason> reason) : m_reason(reason) {}
        std::optional<Reason> m_reason;
    };

    Status status = Status::unavailable(Reason::frameworkUnavailable);

    static EngineAvailability available() { return {Status::available()}; }
    static EngineAvailability unavailable(Reason reason) { return {Status::unavailable(reason)}; }

    bool isAvailable() const { return status.isAvailable(); }
    // The message id of the readout ("engine.availability.…").
    const char *readoutKey() const;
    QString readout() const;

    friend bool operator==(const EngineAvailability &, const EngineAvailability &) = default;
};

} // namespace fenrow
