// The card fields key by key, as a person edits them: one row per key with what the field shows
// after it. Text tables and caret tables are kept apart.
//
// A table starts from a text with "|" for the caret or "[...]" for a selection (empty: an empty
// field). Keys: a character is typed, "⌫" is the delete key, "paste:..." pastes the rest. A
// text row holds the whole text shown; a caret row holds the text before the caret.

#include <gtest/gtest.h>

#include "ElementTestSupport.hpp"
#include "KorvaneElements/CardExpirationDateUITextField.hpp"
#include "KorvaneElements/CardVerificationCodeUITextField.hpp"
#include "platform/Pasteboard.hpp"
#include "platform/Text.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using namespace korvane::elements;
using elements_test::EventLog;
using elements_test::flagsOf;

enum class Field { number, expiry, cvc };

struct Key {
    std::string_view key, after;
};
struct Table {
    std::string_view start;
    std::vector<Key> keys;
    const char* why;
};

struct CardKeystrokeTest : ::testing::Test {
    void TearDown() override {
        if (auto* f = platform::TextField::currentFirstResponder()) f->resignFirstResponder();
    }

    // A fresh field of `kind` holding `start`, its caret or selection placed. The copy icon is
    // on: copying is how a person reads the text back, separators included.
    std::shared_ptr<TextElementUITextField> open(Field kind, std::string_view start) {
        std::shared_ptr<TextElementUITextField> field;
        if (kind == Field::cvc) {
            auto cvc = std::make_shared<CardVerificationCodeUITextField>();
            cvc->setConfig(CardVerificationCodeOptions{.enableCopy = true});
            field = cvc;
        } else {
            field = kind == Field::number
                        ? std::shared_ptr<TextElementUITextField>(std::make_shared<CardNumberUITextField>())
                        : std::make_shared<CardExpirationDateUITextField>();
            field->setConfig(TextElementOptions{.enableCopy = true});
        }
        std::string text;
        platform::TextRange selection{};
        for (char c : start) {
            if (c == '|' || c == '[') selection = {platform::utf16Length(text), 0};
            if (c == ']') selection.length = platform::utf16Length(text) - selection.location;
            if (c != '|' && c != '[' && c != ']') text += c;
        }
        platform::TextFieldDriver user(*field);
        user.type(text);
        EXPECT_EQ(seen(*field), text) << "set-up of " << start;
        if (start.find_first_of("|[") != std::string_view::npos) user.select(selection);
        return field;
    }

    static std::string seen(TextElementUITextField& field) {
        platform::Pasteboard::general().setString("");
        platform::TextFieldDriver(field).tapRightView();
        return platform::Pasteboard::general().string().value_or("<none>");
    }

    static void press(TextElementUITextField& field, std::string_view key) {
        platform::TextFieldDriver user(field);
        if (key == "⌫") {
            user.deleteBackward();
            EXPECT_TRUE(field.backspacePressed());
        } else if (key.starts_with("paste:")) {
            user.paste(key.substr(6));
        } else {
            user.type(key);
        }
    }

    void texts(Field kind, const std::vector<Table>& tables) {
        for (const auto& table : tables) {
            auto field = open(kind, table.start);
            for (auto [key, after] : table.keys) {
                press(*field, key);
                EXPECT_EQ(seen(*field), after) << table.why << " (" << table.start << ", key " << key << ")";
            }
        }
    }

    void carets(Field kind, const std::vector<Table>& tables) {
        for (const auto& table : tables) {
            auto field = open(kind, table.start);
            for (auto [key, before] : table.keys) {
                press(*field, key);
                EXPECT_EQ(field->selectedTextRange(), (platform::TextRange{platform::utf16Length(before), 0}))
                    << table.why << " (" << table.start << ", key " << key << ", caret expected after \"" << before
                    << "\")";
            }
        }
    }

    platform::ManualMainQueueScope main;
    elements_test::TelemetryCapture telemetry;
};

TEST_F(CardKeystrokeTest, NumberText) {
    texts(
        Field::number,
        {
            {"",
             {{"4", "4"},
              {"2", "42"},
              {"4", "424"},
              {"2", "4242"},
              {"4", "4242 4"},
              {"2", "4242 42"},
              {"4", "4242 424"},
              {"2", "4242 4242"},
              {"4", "4242 4242 4"},
              {"2", "4242 4242 42"},
              {"4", "4242 4242 424"},
              {"2", "4242 4242 4242"},
              {"4", "4242 4242 4242 4"},
              {"2", "4242 4242 4242 42"},
              {"4", "4242 4242 4242 424"},
              {"2", "4242 4242 4242 4242"},
              {"4", "4242 4242 4242 42424"},
              {"2", "4242 4242 4242 424242"},
              {"4", "4242 4242 4242 4242424"},
              {"2", "4242 4242 4242 4242424"}},
             "a visa grows to 19 digits in groups of 4, 4, 4 and 7, then refuses more"},
            {"",
             {{"3", "3"},
              {"7", "37"},
              {"8", "378"},
              {"2", "3782"},
              {"8", "3782 8"},
              {"2", "3782 82"},
              {"2", "3782 822"},
              {"4", "3782 8224"},
              {"6", "3782 82246"},
              {"3", "3782 822463"},
              {"1", "3782 822463 1"},
              {"0", "3782 822463 10"},
              {"0", "3782 822463 100"},
              {"0", "3782 822463 1000"},
              {"5", "3782 822463 10005"},
              {"1", "3782 822463 10005"}},
             "american express groups 4, 6, 5 and holds 15"},
            {"42|42 4242 4242 4242",
             {{"1", "4214 2424 2424 24242"},
              {"3", "4213 4242 4242 424242"},
              {"5", "4213 5424 2424 2424242"},
              {"7", "4213 5424 2424 2424242"},
              {"⌫", "4213 4242 4242 424242"}},
             "typed in the middle, each key lands where the last one did"},
            {"4242| 4242 4242 4242",
             {{"9", "4242 9424 2424 24242"}, {"⌫", "4242 4242 4242 4242"}, {"⌫", "4244 2424 2424 242"}},
             "just before a separator"},
            {"4242 |4242 4242 4242",
             {{"⌫", "4244 2424 2424 242"}, {"9", "4249 4242 4242 4242"}},
             "delete just after a separator takes the digit before it"},
            {"|4242 4242 4242 4242", {{"⌫", "4242 4242 4242 4242"}, {"4", "4424 2424 2424 24242"}}, "at the start"},
            {"4242 4|", {{"⌫", "4242 "}, {"⌫", "424"}}, "at the end; the delete after a separator takes the digit"},
            {"4242 4242 4242 42|42424",
             {{"1", "4242 4242 4242 4242424"},
              {"paste:99", "4242 4242 4242 4242424"},
              {"⌫", "4242 4242 4242 442424"},
              {"1", "4242 4242 4242 4142424"}},
             "a full field refuses keys and pastes; after a delete there is room for one"},
            {"3782 82|2463 10005",
             {{"1", "3782 822463 10005"}, {"⌫", "3782 824631 0005"}, {"2", "3782 822463 10005"}},
             "a full american express"},
            {"3782 |822463 1000", {{"⌫", "3788 224631 000"}, {"2", "3782 822463 1000"}}, "amex after a separator"},
            {"|4242 4242 4242 4242", {{"3", "4242 4242 4242 4242"}}, "a 3 would make it a 15-digit brand: no room"},
            {"4242 |4242",
             {{"paste:12-34", "4242 1234 4242"},
              {"paste:9876543", "4242 1234 9876 5434242"},
              {"paste:1", "4242 1234 9876 5434242"}},
             "pastes into the middle; the digits go in, the rest is dropped"},
            {"4242 4242 4242 42|42", {{"paste:987654", "4242 4242 4242 4298742"}}, "a paste takes only the room left"},
            {"[4242] 4242 4242 4242", {{"paste:5555", "5555 4242 4242 4242"}}, "a paste replaces the selection"},
            {"3782 [8]22463 10005", {{"9", "3782 922463 10005"}}, "typing over a selection of a full field"},
            {"4242 4242|",
             {{"a", "4242 4242"},
              {"\xCC\x81", "4242 4242"},
              {"4️⃣", "4242 4242"},
              {"٤", "4242 4242"},
              {"paste:1️⃣2️⃣", "4242 4242"},
              {"paste:5\xCC\x81 6", "4242 4242 6"}},
             "a letter, a combining mark, a keycap, another script's digit: none is a digit 0-9"},
        });
}

TEST_F(CardKeystrokeTest, NumberCaret) {
    carets(Field::number,
           {
               {"42|42 4242 4242 4242",
                {{"1", "421"}, {"3", "4213"}, {"⌫", "421"}, {"a", "421"}},
                "stays after the digit it followed while the groups move"},
               {"4242| 4242", {{"9", "4242 9"}, {"⌫", "4242"}, {"⌫", "424"}}, "before a separator"},
               {"4242 |4242", {{"⌫", "424"}, {"⌫", "42"}}, "after a separator"},
               {"|4242", {{"⌫", ""}, {"5", "5"}}, "at the start, also when the brand changes"},
               {"4242 4242 4242 4242|", {{"4", "4242 4242 4242 42424"}}, "the end stays the end"},
               {"4242 |4242", {{"paste:1234", "4242 1234"}}, "after a paste"},
               {"3782 822463| 10005", {{"⌫", "3782 82246"}, {"3", "3782 822463"}}, "american express"},
               {"3782 |822463 1000", {{"⌫", "378"}, {"2", "3782"}}, "amex after a separator"},
               {"4242 4242 4242 42|42424", {{"1", "4242 4242 4242 42"}}, "a refused key leaves the caret"},
           });
}

TEST_F(CardKeystrokeTest, ExpiryText) {
    texts(Field::expiry,
          {
              {"", {{"5", "05"}, {"1", "05/1"}, {"2", "05/12"}}, "a first digit above 1 is a month with a leading 0"},
              {"",
               {{"1", "1"}, {"3", "1"}, {"2", "12"}, {"2", "12/2"}, {"5", "12/25"}, {"9", "12/25"}},
               "13 is refused, the slash comes with the third digit, the mask ends at five"},
              {"", {{"0", "0"}, {"0", "00"}, {"4", "00/4"}}, "month 00 is not refused"},
              {"", {{"x", ""}, {"/", ""}, {"1", "1"}}, "letters and a leading slash are dropped"},
              {"1|2/25", {{"0", "12/25"}, {"⌫", "02/25"}}, "a full date refuses a key; the month takes its 0"},
              {"12|/25", {{"⌫", "12/5"}, {"0", "10/25"}}, "delete before the slash, then type the month"},
              {"12/|25", {{"⌫", "12/5"}}, "delete after the slash takes the month's digit"},
              {"12/2|", {{"⌫", "12/"}, {"⌫", "1"}, {"⌫", ""}}, "at the end"},
              {"12|/2", {{"0", "12/02"}}, "just before the slash"},
              {"12/|5", {{"paste:34", "12/35"}}, "a paste in the middle takes the room left"},
              {"|1", {{"5", "05/1"}}, "a 5 typed at the start is a month"},
              {"|0", {{"paste:962", "09/60"}}, "the leading 0 takes room too: nothing is pushed out"},
              {"",
               {{"paste:1345", "1"},
                {"paste:1️⃣2️⃣/3️⃣0️⃣", "1"},
                {"paste:\xCC\x81", "1"},
                {"paste:2/30 is the date", "12/30"}},
               "pastes: a month above 12 goes back to 1, keycaps are no digits"},
          });
}

TEST_F(CardKeystrokeTest, ExpiryCaret) {
    carets(Field::expiry, {
                              {"1|2/25", {{"0", "1"}, {"⌫", "0"}}, "the leading 0 comes before the caret"},
                              {"|1", {{"5", "05"}}, "after the 5 typed, behind its 0"},
                              {"|0", {{"paste:962", "09/6"}}, "after the pasted digits that went in"},
                              {"12/|25", {{"⌫", "1"}}, "after the month digit left"},
                              {"12|/2", {{"0", "12/0"}}, "after the slash the mask added"},
                              {"", {{"5", "05"}, {"3", "05/3"}}, "the end stays the end"},
                              {"1|", {{"3", "1"}}, "a refused month"},
                          });
}

TEST_F(CardKeystrokeTest, CodeTextAndCaret) {
    texts(Field::cvc, {
                          {"", {{"1", "1"}, {"2", "12"}, {"3", "123"}, {"4", "1234"}, {"5", "1234"}}, "four digits"},
                          {"12|34", {{"⌫", "134"}, {"9", "1934"}}, "in the middle"},
                          {"|123", {{"9", "9123"}, {"8", "9123"}}, "at the start, until full"},
                          {"1|4", {{"paste:2345", "1234"}}, "a paste takes the room left"},
                          {"12|3", {{"٤", "123"}, {"\xCC\x81", "123"}}, "no digit 0-9"},
                      });
    carets(Field::cvc, {
                           {"12|34", {{"⌫", "1"}, {"9", "19"}}, "in the middle"},
                           {"|123", {{"9", "9"}, {"8", "9"}}, "at the start"},
                       });
}

// A key or paste the mask takes nothing of leaves everything as it was.
TEST_F(CardKeystrokeTest, RefusedKeysChangeNothing) {
    struct Case {
        Field kind;
        std::string_view start, key;
        const char* why;
    };
    const Case cases[] = {
        {Field::number, "4242 4242 4242 4242|", "a", "a letter after a complete number"},
        {Field::number, "4242 4242 4242 4242|", "paste:abc", "a pasted word"},
        {Field::number, "4242 4242 4242 4242|", "\xCC\x81", "a combining mark alone"},
        {Field::number, "4242 4242 4242 4242|", "4️⃣", "a keycap"},
        {Field::number, "3782 82|2463 10005", "1", "a full field"},
        {Field::expiry, "1|2/25", "0", "a full date"},
        {Field::cvc, "123|", "٤", "another script's digit"},
    };
    for (const auto& c : cases) {
        auto field = open(c.kind, c.start);
        const std::string text = seen(*field);
        const auto caret = field->selectedTextRange();
        const auto complete = field->isComplete();
        const auto metadata = field->metadata();
        EventLog log(*field);
        press(*field, c.key);
        EXPECT_EQ(seen(*field), text) << c.why;
        EXPECT_EQ(field->selectedTextRange(), caret) << c.why;
        EXPECT_EQ(field->isComplete(), complete) << c.why;
        EXPECT_EQ(flagsOf(field->metadata()), flagsOf(metadata)) << c.why;
        EXPECT_TRUE(log.events.empty()) << c.why;
    }
}

}  // namespace
