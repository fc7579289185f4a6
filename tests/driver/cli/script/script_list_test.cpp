// What scripts can name, with the real component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/script/script_list.h"

#include "driver/cli/script/script_parser.h"
#include "driver/core/user_actions.h"
#include "driver/widgets/widget_names.h"
#include "tests/driver/handover/handover_fixture.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <set>

namespace quelm {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class ScriptListTest : public HandoverTest {
protected:
    const ListedWidget& widget(const std::string& name)
    {
        names_ = scriptNames(driver());
        const auto found =
            std::ranges::find_if(names_.widgets, [&](const auto& one) { return one.view.name == name; });
        if (found == names_.widgets.end())
            throw std::runtime_error("not listed: " + name);
        return *found;
    }

private:
    ScriptNames names_;
};

TEST_F(ScriptListTest, EachNameStandsOnceAndCanBeShown)
{
    std::set<std::string> seen;
    for (const auto& one : scriptNames(driver()).widgets) {
        EXPECT_TRUE(seen.insert(one.view.name).second) << one.view.name;
        EXPECT_EQ(driver().show(one.view.name).kind, one.view.kind);
        EXPECT_THAT(one.verbs, Contains("show"));
    }
    EXPECT_GT(seen.size(), 100U);
}

TEST_F(ScriptListTest, SaysWhatCanBeDoneWithEach)
{
    EXPECT_THAT(widget(widget_names::lanFaxOkButton).verbs, ElementsAre("press", "show"));
    EXPECT_FALSE(widget(widget_names::lanFaxOkButton).callback.empty());
    EXPECT_EQ(widget(widget_names::lanFaxOkButton).label, "Ok");
    const auto& speed = widget(widget_names::lanFaxSendSpeed);
    EXPECT_THAT(speed.verbs, ElementsAre("choose", "show"));
    EXPECT_EQ(speed.numbers, std::pair(0, 2));
    EXPECT_EQ(speed.view.items.size(), 3U);
    EXPECT_EQ(speed.label, "Send Speed");
    EXPECT_EQ(speed.window, "Lan Fax Window");
    EXPECT_EQ(widget(widget_names::sendAtHr).numbers, std::pair(1, 12));
    EXPECT_EQ(widget(widget_names::lanFaxCoverSheetNotes).longest, 64U);
    EXPECT_THAT(widget(widget_names::lanFaxRecipientList).verbs, ElementsAre("select", "rows", "show"));
}

TEST_F(ScriptListTest, EveryFunctionCanBeCalledAndNoOther)
{
    const auto functions = scriptNames(driver()).functions;
    EXPECT_THAT(functions, Contains("T40InvokeFaxDialog"));
    for (const auto& name : driver().component().exportList())
        EXPECT_EQ(driver().actions().canCall(name), std::ranges::count(functions, name) == 1) << name;
    EXPECT_LT(functions.size(), driver().component().exportList().size()) << "check boxes fire some";
}

TEST_F(ScriptListTest, TheNumberOfACardIsNotShown)
{
    driver().tick(widget_names::lanFaxCreditCard, true);
    driver().type(widget_names::lanFaxCreditCardInfo, "1234567890");
    const auto names = scriptNames(driver());
    EXPECT_THAT(namesText(names), Not(HasSubstr("1234567890")));
    EXPECT_THAT(namesJson(names), Not(HasSubstr("1234567890")));
}

TEST_F(ScriptListTest, EachLineIsReadBackByItsWords)
{
    const auto names = scriptNames(driver());
    const auto text = namesText(names);
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(text, '\n')),
              names.widgets.size() + names.functions.size());
    EXPECT_THAT(text,
                HasSubstr("widget \"LanFax Send Speed\" kind ComboBoxMain window \"Lan Fax Window\" label "
                          "\"Send Speed\" choose show value 2 from 0 to 2 items "));
    const auto json = nlohmann::json::parse(namesJson(names));
    EXPECT_EQ(json["widgets"].size(), names.widgets.size());
    EXPECT_EQ(json["functions"], nlohmann::json(names.functions));
    for (const auto& one : json["widgets"])
        EXPECT_EQ(parseScript("show " + inQuotes(one["name"].get<std::string>()), "list").size(), 1U);
}

} // namespace
} // namespace quelm
