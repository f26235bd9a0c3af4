#pragma once
// The one failure value of the wallet client.

#include <string>

namespace tovi {

struct ToviApiError {
    // Written for the customer; the tap to pay flow shows it under its button.
    std::string humanReadableMessage;
    // For developers: what went wrong underneath (status, cause). May be empty.
    std::string detail;

    // The standard error description, as appended to the load failure log line:
    // "The operation couldn't be completed. (ToviApiError: <detail or message>)".
    [[nodiscard]] std::string localizedDescription() const;

    // The whole value as text, for the add-payment-method log line:
    // ToviApiError(humanReadableMessage: "...", detail: "...").
    [[nodiscard]] std::string rendering() const;

    friend bool operator==(const ToviApiError&, const ToviApiError&) = default;
};

}  // namespace tovi
