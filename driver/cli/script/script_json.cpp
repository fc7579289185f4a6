// The answers of scripts in JSON.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/script/script_json.h"

#include "driver/cli/job/iso_moment.h"
#include "driver/cli/job/job_json.h"
#include "driver/cli/script/script_answers.h"

#include <string>

namespace quelm {
namespace {

using Json = nlohmann::ordered_json;

Json windowsObject(const std::vector<WidgetView>& windows)
{
    Json list = Json::array();
    for (const auto& window : windows)
        list.push_back({{"name", window.name}, {"title", window.title.value_or("")}});
    return list;
}

Json receiptObject(const ScriptReceipt& receipt)
{
    const bool waits = receipt.kind == ScriptReceipt::Kind::waits;
    const bool isHanded = receipt.kind == ScriptReceipt::Kind::handed;
    return {{"state", waits ? "waiting" : "handed over"},
            {"held", receipt.kind == ScriptReceipt::Kind::held},
            {"number", waits ? Json(receipt.job) : Json()},
            {"queueJob", waits || receipt.job == 0 ? Json() : Json(receipt.job)},
            {"destination", Json::parse(targetJson(receipt.target))},
            {"due", isHanded ? Json() : Json(isoMoment(receipt.until))}};
}

} // namespace

Json widgetObject(const WidgetView& view)
{
    Json json = {{"name", view.name},
                 {"kind", view.kind},
                 {"visible", view.visible},
                 {"sensitive", view.sensitive},
                 {"operable", view.operable}};
    if (view.text)
        json["text"] = *view.text;
    if (view.title)
        json["title"] = *view.title;
    if (view.ticked)
        json["ticked"] = *view.ticked;
    if (view.value)
        json["value"] = *view.value;
    if (!view.items.empty())
        json["items"] = view.items;
    if (view.rowCount) {
        json["rows"] = *view.rowCount;
        json["selected"] = view.selection;
    }
    return json;
}

std::string jsonLine(const Json& json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string answerJson(const ScriptAnswer& answer)
{
    Json json = {{"line", answer.line}};
    if (answer.widget)
        json["widget"] = widgetObject(*answer.widget);
    if (answer.list) {
        json["list"] = *answer.list;
        json["rows"] = answer.rows;
    }
    if (answer.windows)
        json["windows"] = windowsObject(*answer.windows);
    if (!answer.isAction())
        return jsonLine(json);
    json["ok"] = true;
    if (answer.summary)
        json["summary"] = Json::parse(summaryJson(*answer.summary, {}));
    if (answer.receipt)
        json["job"] = receiptObject(*answer.receipt);
    if (answer.question)
        json["question"] = answer.question->text;
    return jsonLine(json);
}

} // namespace quelm
