#pragma once
// CurrencyTextFieldSwiftUIWrapper: the dollars entry field. A person types a decimal number
// ("1", "2", "3" shows $123); the bound value is that number in dollars, absent while the
// field is empty.
//
//     CurrencyTextFieldSwiftUIWrapper{.value = amount.binding(), .currencySymbol = "$"}
//
// The platform text field is made once per view identity (`makeUIView`) with a `Coordinator`
// as its delegate, which edits the text itself on every key and refuses a second separator,
// a tenth whole digit and more fraction digits than `numberOfDecimalPlaces`. Each build runs
// `updateUIView`, which rewrites the text only when the bound value differs from the one the
// field itself last produced, so a parent that echoes the typed value back leaves "$12." and
// the caret alone.
//
// What the platform field does not model is not carried: text alignment, content type,
// autocorrection and capitalisation, the return key's type, secure entry and the keyboard's
// "Done" bar.
//
// Thread safety: main queue only. Caret placement and the `isResponder` updates run on a later
// turn of the main queue, never while the platform is still handling the key.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/view/Color.hpp"
#include "platform/view/Font.hpp"
#include "platform/view/Node.hpp"
#include "platform/view/Scope.hpp"
#include "platform/view/State.hpp"
#include "platform/view/TextField.hpp"

namespace tovi {

struct CurrencyTextFieldSwiftUIWrapper {
    static constexpr const char* kTypeName = "CurrencyTextFieldSwiftUIWrapper";

    // The field's delegate and the target of its editing events.
    class Coordinator final : public platform::TextFieldDelegate, public std::enable_shared_from_this<Coordinator> {
    public:
        explicit Coordinator(const CurrencyTextFieldSwiftUIWrapper& parent);

        // Always false: the coordinator writes the text and places the caret itself.
        bool shouldChangeCharacters(platform::TextField& field, platform::TextRange range,
                                    std::string_view replacement) override;
        void textFieldDidBeginEditing(platform::TextField& field) override;
        void textFieldDidEndEditing(platform::TextField& field) override;
        // Moves focus to the field tagged one higher under the superview's superview, or lets
        // go of it; then `onReturn`. Always true.
        bool textFieldShouldReturn(platform::TextField& field) override;
        void textFieldEditingDidBegin(platform::TextField& field);
        void textFieldEditingDidEnd(platform::TextField& field);

        // The value the field last produced or showed: what tells the parent's echo of it
        // from a change made outside.
        std::optional<double> internalValue;
        // Focus was taken once on the parent's request; never reset.
        bool didBecomeFirstResponder = false;

    private:
        friend struct CurrencyTextFieldSwiftUIWrapper;
        // Places an empty selection at `position` of the field on a later turn of the main
        // queue, after the platform has finished with the key.
        void placeCaretLater(std::size_t position);

        platform::view::Binding<std::optional<double>> value_;
        std::optional<platform::view::Binding<bool>> isResponder_;
        std::function<void()> onDoneClick_;
        std::function<void()> onReturn_;
        bool alwaysShowFractions_;
        int numberOfDecimalPlaces_;
        std::optional<std::string> currencySymbol_;
        std::function<void(bool)> onEditingChanged_;
        std::weak_ptr<platform::TextField> field_;
    };

    platform::view::Binding<std::optional<double>> value;
    std::optional<platform::view::Binding<bool>> isResponder = std::nullopt;
    int tag = 0;
    bool alwaysShowFractions = false;
    int numberOfDecimalPlaces = 2;
    std::optional<std::string> currencySymbol = std::nullopt;
    std::string placeholder = {};
    std::optional<platform::view::Font> font = std::nullopt;
    std::optional<platform::view::Color> textColor = std::nullopt;
    std::optional<platform::view::Color> accentColor = std::nullopt;
    platform::KeyboardType keyboardType = platform::KeyboardType::defaultType;
    bool isUserInteractionEnabled = true;
    std::function<void()> onDoneClick = [] {};
    std::function<void()> onReturn = [] {};
    std::function<void(bool)> onEditingChanged = [](bool) {};

    [[nodiscard]] std::shared_ptr<Coordinator> makeCoordinator() const;
    [[nodiscard]] std::shared_ptr<platform::TextField> makeUIView(Coordinator& coordinator) const;
    void updateUIView(platform::TextField& field, Coordinator& coordinator) const;

    // The hosted field: made once for this view's identity, updated at every build.
    [[nodiscard]] platform::view::Node body(platform::view::Scope& scope) const;
};

}  // namespace tovi
