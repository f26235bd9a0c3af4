#pragma once
// Shared set-up for the element tests: telemetry never leaves the process, the main queue and
// clock are manual, and events are recorded.

#include <memory>
#include <string>
#include <vector>

#include "KorvaneElements/ElementConfigError.hpp"
#include "KorvaneElements/ElementEvent.hpp"
#include "KorvaneElements/ElementMetadata.hpp"
#include "KorvaneElements/Telemetry.hpp"
#include "KorvaneElements/TextElementUITextField.hpp"
#include "ValueKeys.hpp"
#include "platform/Cancellable.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/testing/RecordingTransport.hpp"

namespace elements_test {

// Installs a recording transport for telemetry for the scope; the previous one comes back
// afterwards. Every post is answered 202 at once.
class TelemetryCapture {
public:
    TelemetryCapture() : previous_(korvane::elements::telemetrySession()) {
        transport_->setHandler([](const platform::HttpRequest&) {
            return platform::HttpResult(platform::HttpResponse{202, {}, "", ""});
        });
        korvane::elements::setTelemetrySession(transport_);
    }
    ~TelemetryCapture() { korvane::elements::setTelemetrySession(previous_); }
    TelemetryCapture(const TelemetryCapture&) = delete;
    TelemetryCapture& operator=(const TelemetryCapture&) = delete;

    [[nodiscard]] std::vector<platform::HttpRequest> requests() const { return transport_->requests(); }
    [[nodiscard]] std::vector<std::string> bodies() const {
        std::vector<std::string> result;
        for (const auto& r : transport_->requests()) result.push_back(r.body);
        return result;
    }

private:
    std::shared_ptr<platform::RecordingTransport> transport_ = std::make_shared<platform::RecordingTransport>();
    std::shared_ptr<platform::HttpSession> previous_;
};

// Tests read values as the library's own calls do; a host cannot make this key.
inline korvane::elements::ValueKey valueKey() {
    return korvane::elements::internal::ValueKeys::make();
}

// What an element holds: its text is never readable, so through the value (which a number
// element gives without blanks).
inline std::string shown(const korvane::elements::TextElementUITextField& e) {
    return e.getValue(valueKey()).value_or("<none>");
}

// What `setConfig(options)` refused with, or nothing when the element took the options.
inline std::optional<korvane::elements::ElementConfigError> configError(
    korvane::elements::TextElementUITextField& e, const std::optional<korvane::elements::TextElementOptions>& options) {
    try {
        e.setConfig(options);
    } catch (const korvane::elements::ElementConfigException& refused) {
        return refused.error();
    }
    return std::nullopt;
}

// Every event an element publishes, in order.
class EventLog {
public:
    explicit EventLog(korvane::elements::TextElementUITextField& element)
        : subscription_(element.subject().publisher().sink(
              [this](const korvane::elements::ElementEvent& e) { events.push_back(e); })) {}

    [[nodiscard]] std::vector<std::string> types() const {
        std::vector<std::string> result;
        for (const auto& e : events) result.push_back(e.type);
        return result;
    }
    [[nodiscard]] const korvane::elements::ElementEvent& last() const { return events.back(); }

    std::vector<korvane::elements::ElementEvent> events;

private:
    platform::AnyCancellable subscription_;
};

// The flags of an event as one comparable value: complete, empty, valid, maskSatisfied.
struct Flags {
    bool complete, empty, valid, maskSatisfied;
    friend bool operator==(const Flags&, const Flags&) = default;
};
inline Flags flagsOf(const korvane::elements::ElementEvent& e) {
    return {e.complete, e.empty, e.valid, e.maskSatisfied};
}
inline Flags flagsOf(const korvane::elements::ElementMetadata& m) {
    return {m.complete, m.empty, m.valid, m.maskSatisfied};
}

}  // namespace elements_test
