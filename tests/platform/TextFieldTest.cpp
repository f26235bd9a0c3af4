// The text field model and its driver: what the phone's field does with keys, focus, the
// delegate and control events, and the view hierarchy around it.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/Pasteboard.hpp"
#include "platform/view/TextField.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using platform::ControlEvent;
using platform::TextField;
using platform::TextFieldDriver;
using platform::TextRange;

// Writes every delegate question and control event into one journal, so order is testable.
struct Journal : platform::TextFieldDelegate {
    std::vector<std::string> entries;
    bool allowChange = true;
    bool allowBegin = true;
    bool allowEnd = true;
    std::vector<std::pair<TextRange, std::string>> changes;

    bool textFieldShouldBeginEditing(TextField&) override {
        entries.push_back("shouldBegin");
        return allowBegin;
    }
    void textFieldDidBeginEditing(TextField&) override { entries.push_back("didBegin"); }
    bool textFieldShouldEndEditing(TextField&) override {
        entries.push_back("shouldEnd");
        return allowEnd;
    }
    void textFieldDidEndEditing(TextField&) override { entries.push_back("didEnd"); }
    bool shouldChangeCharacters(TextField&, TextRange range, std::string_view replacement) override {
        entries.push_back("shouldChange");
        changes.emplace_back(range, std::string(replacement));
        return allowChange;
    }

    void watch(TextField& field, const std::string& prefix = "") {
        const std::pair<ControlEvent, const char*> events[] = {{ControlEvent::touchDown, "touchDown"},
                                                               {ControlEvent::touchUpInside, "touchUpInside"},
                                                               {ControlEvent::editingDidBegin, "editingDidBegin"},
                                                               {ControlEvent::editingChanged, "editingChanged"},
                                                               {ControlEvent::editingDidEnd, "editingDidEnd"}};
        for (auto [event, name] : events) {
            field.addAction(event, [this, label = prefix + name](TextField&) { entries.push_back(label); });
        }
    }
};

struct TextFieldTest : ::testing::Test {
    void SetUp() override {
        field = std::make_shared<TextField>();
        journal = std::make_shared<Journal>();
        field->setDelegate(journal);
        journal->watch(*field);
    }
    void TearDown() override { field->resignFirstResponder(); }

    std::shared_ptr<TextField> field;
    std::shared_ptr<Journal> journal;
};

TEST_F(TextFieldTest, TapAsksDelegateThenBeginsEditingInThePhonesOrder) {
    TextFieldDriver user(*field);
    ASSERT_TRUE(user.tap());
    EXPECT_EQ(journal->entries,
              (std::vector<std::string>{"touchDown", "shouldBegin", "didBegin", "editingDidBegin", "touchUpInside"}));
    EXPECT_TRUE(field->isFirstResponder());
}

TEST_F(TextFieldTest, EachKeyAsksTheDelegateWithTheReplacedRangeThenSendsEditingChanged) {
    TextFieldDriver user(*field);
    user.tap();
    journal->entries.clear();
    user.type("a😀b");
    EXPECT_EQ(field->text(), "a😀b");
    EXPECT_EQ(journal->entries, (std::vector<std::string>{"shouldChange", "editingChanged", "shouldChange",
                                                          "editingChanged", "shouldChange", "editingChanged"}));
    // The emoji is one key but two UTF-16 units: "b" goes in at offset 3.
    ASSERT_EQ(journal->changes.size(), 3u);
    EXPECT_EQ(journal->changes[1], std::make_pair(TextRange{1, 0}, std::string("😀")));
    EXPECT_EQ(journal->changes[2], std::make_pair(TextRange{3, 0}, std::string("b")));
}

TEST_F(TextFieldTest, VetoedChangeLeavesTextAndSendsNoEvent) {
    TextFieldDriver user(*field);
    user.type("12");
    journal->allowChange = false;
    journal->entries.clear();
    user.type("3");
    user.deleteBackward();
    user.paste("99");
    EXPECT_EQ(field->text(), "12");
    EXPECT_EQ(journal->entries, (std::vector<std::string>{"shouldChange", "shouldChange", "shouldChange"}));
}

TEST_F(TextFieldTest, DeleteRemovesOneUserPerceivedCharacterOrTheSelection) {
    struct Case {
        const char* text;
        TextRange selection;
        const char* expected;
        const char* why;
    };
    const Case cases[] = {
        {"ab", {2, 0}, "a", "a plain letter"},
        {"a😀", {3, 0}, "a", "an emoji is two UTF-16 units but one character"},
        {"ae\xCC\x81", {3, 0}, "a", "e with a combining accent goes as one"},
        {"a🇫🇷", {5, 0}, "a", "a flag of two regional indicators goes as one"},
        {"a👨‍👩‍👧b", {9, 0}, "ab", "a family joined with zero-width joiners, before the caret"},
        {"\r\n", {2, 0}, "", "CR LF is one character"},
        {"abcd", {1, 2}, "ad", "a selection is removed whole"},
        {"ab", {0, 0}, "ab", "nothing before the caret"},
    };
    TextFieldDriver user(*field);
    user.tap();
    for (const auto& c : cases) {
        field->setText(c.text);
        user.select(c.selection);
        user.deleteBackward();
        EXPECT_EQ(field->text(), c.expected) << c.why;
    }
}

TEST_F(TextFieldTest, ProgrammaticTextSendsNothingAndStoresEmptyForNothing) {
    field->setText("abc");
    field->setText(std::nullopt);
    EXPECT_EQ(field->text(), "");
    EXPECT_TRUE(journal->entries.empty());
}

TEST_F(TextFieldTest, PasteReplacesTheSelectionAsOneChange) {
    TextFieldDriver user(*field);
    user.type("1299");
    user.select(TextRange{2, 2});
    journal->entries.clear();
    user.paste("/3");
    EXPECT_EQ(field->text(), "12/3");
    EXPECT_EQ(journal->entries, (std::vector<std::string>{"shouldChange", "editingChanged"}));
    EXPECT_EQ(platform::Pasteboard::general().string(), "/3");
}

TEST_F(TextFieldTest, TakingFocusMakesThePreviousFieldResignFirst) {
    auto other = std::make_shared<TextField>();
    journal->watch(*other, "other.");
    TextFieldDriver(*field).tap();
    journal->entries.clear();
    ASSERT_TRUE(other->becomeFirstResponder());
    EXPECT_EQ(journal->entries,
              (std::vector<std::string>{"shouldEnd", "didEnd", "editingDidEnd", "other.editingDidBegin"}));
    EXPECT_EQ(TextField::currentFirstResponder(), other.get());
    other->resignFirstResponder();
}

TEST_F(TextFieldTest, DelegateCanRefuseFocusAndRefuseToLetGo) {
    journal->allowBegin = false;
    EXPECT_FALSE(TextFieldDriver(*field).tap());
    journal->allowBegin = true;
    ASSERT_TRUE(field->becomeFirstResponder());
    journal->allowEnd = false;
    auto other = std::make_shared<TextField>();
    EXPECT_FALSE(other->becomeFirstResponder()) << "the focused field would not resign";
    EXPECT_TRUE(field->isFirstResponder());
    journal->allowEnd = true;
}

TEST_F(TextFieldTest, DestroyedFirstResponderIsForgotten) {
    auto temporary = std::make_shared<TextField>();
    temporary->becomeFirstResponder();
    temporary.reset();
    EXPECT_EQ(TextField::currentFirstResponder(), nullptr);
}

// Caret placement, tested apart from the text.
TEST_F(TextFieldTest, CaretFollowsInsertionsAndJumpsToTheEndOnProgrammaticText) {
    TextFieldDriver user(*field);
    user.type("abcd");
    EXPECT_EQ(field->selectedTextRange(), (TextRange{4, 0}));
    user.placeCaret(1);
    user.type("😀");
    EXPECT_EQ(field->selectedTextRange(), (TextRange{3, 0})) << "after the two units of the emoji";
    field->setText("xy");
    EXPECT_EQ(field->selectedTextRange(), (TextRange{2, 0}));
    user.select(TextRange{1, 40});
    EXPECT_EQ(field->selectedTextRange(), (TextRange{1, 1})) << "clamped to the text";
}

TEST_F(TextFieldTest, PositionsAreUtf16OffsetsWithinTheDocument) {
    field->setText("a😀");
    EXPECT_EQ(field->endOfDocument(), 3u);
    EXPECT_EQ(field->position(field->beginningOfDocument(), 3), 3u);
    EXPECT_EQ(field->position(1, -2), std::nullopt);
    EXPECT_EQ(field->position(0, 4), std::nullopt);
    EXPECT_EQ(field->offset(3, 1), -2);
    EXPECT_EQ(field->textRange(3, 1), (TextRange{1, 2}));
    EXPECT_EQ(field->textRange(0, 9), std::nullopt);
}

// A subclass that hides its text, as the secure elements do, and counts hook calls.
class HiddenField : public TextField {
public:
    int insertions = 0;
    std::vector<std::string> order;
    HiddenField() {
        addAction(ControlEvent::editingChanged, [this](TextField&) { order.push_back("editingChanged"); });
    }

protected:
    std::optional<std::string> readText() const override { return std::nullopt; }
    void insertTextHook(std::string_view text) override {
        ++insertions;
        TextField::insertTextHook(text);
        order.push_back("after base insertion");
    }
};

TEST(TextFieldSubclass, HiddenTextStaysHiddenAndEditingChangedFollowsTheWholeInsertionHook) {
    HiddenField field;
    field.setText("secret");
    EXPECT_EQ(field.text(), std::nullopt);
    EXPECT_EQ(field.TextField::text(), std::nullopt) << "a qualified call cannot bypass the hidden text";
    TextFieldDriver(field).type("x");
    EXPECT_EQ(field.insertions, 1);
    EXPECT_EQ(field.order, (std::vector<std::string>{"after base insertion", "editingChanged"}));
    field.resignFirstResponder();
}

TEST(TextFieldRightView, ShowsByModeAndTapsReachItsRecogniser) {
    TextField field;
    auto icon = std::make_shared<platform::NativeView>(platform::Rect{0, 0, 32, 24});
    int taps = 0;
    icon->addTapGestureRecognizer([&] { ++taps; });
    field.setRightView(icon);
    EXPECT_EQ(icon->superview(), &field);

    TextFieldDriver user(field);
    EXPECT_FALSE(user.tapRightView()) << "mode never hides it";
    field.setRightViewMode(platform::ViewMode::whileEditing);
    EXPECT_FALSE(field.isRightViewVisible());
    user.tap();
    EXPECT_TRUE(user.tapRightView());
    EXPECT_EQ(taps, 1);
    field.resignFirstResponder();

    field.setRightView(nullptr);
    EXPECT_EQ(icon->superview(), nullptr);
}

TEST(NativeView, HierarchyTagsTintAndInteraction) {
    auto root = std::make_shared<platform::NativeView>();
    auto middle = std::make_shared<platform::NativeView>();
    auto leaf = std::make_shared<platform::NativeImageView>();
    root->addSubview(middle);
    middle->addSubview(leaf);
    leaf->setTag(7);
    EXPECT_EQ(root->viewWithTag(7), leaf.get());
    EXPECT_EQ(root->viewWithTag(8), nullptr);

    root->setTintColor(platform::view::Color::rgb(1, 0, 0));
    EXPECT_EQ(leaf->tintColor(), platform::view::Color::rgb(1, 0, 0)) << "inherited from the root";

    middle->addSubview(root);
    EXPECT_EQ(root->superview(), nullptr) << "a view cannot go inside its own subtree";

    root->addSubview(leaf);
    EXPECT_EQ(leaf->superview(), root.get());
    EXPECT_TRUE(middle->subviews().empty()) << "moved, not copied";

    int taps = 0;
    leaf->addTapGestureRecognizer([&] { ++taps; });
    EXPECT_FALSE(leaf->tap()) << "image views ignore touches by default";
    leaf->setUserInteractionEnabled(true);
    root->setUserInteractionEnabled(false);
    EXPECT_FALSE(leaf->tap()) << "a superview without interaction swallows the tap";
    root->setUserInteractionEnabled(true);
    EXPECT_TRUE(leaf->tap());
    EXPECT_EQ(taps, 1);

    root.reset();
    EXPECT_EQ(leaf->superview(), nullptr) << "cleared when the superview goes";
}

}  // namespace
