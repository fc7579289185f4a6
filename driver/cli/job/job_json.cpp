// Makes JSON of jobs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/job_json.h"

#include "driver/cli/job/iso_moment.h"

#include <nlohmann/json.hpp>

#include <optional>

namespace quelm {
namespace {

using Json = nlohmann::ordered_json;

Json orNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

Json momentOrNull(std::time_t moment) { return moment == 0 ? Json() : Json(isoMoment(moment)); }

Json recipientsOf(const std::vector<JobRecipient>& recipients)
{
    Json list = Json::array();
    for (const auto& one : recipients)
        list.push_back({{"name", one.name},
                        {"number", one.number},
                        {"organization", one.organization},
                        {"phone", one.phone},
                        {"email", one.email},
                        {"mailbox", one.mailbox}});
    return list;
}

Json targetOf(const JobTarget& target)
{
    if (const auto* device = std::get_if<NetworkAddress>(&target))
        return {{"kind", "device"}, {"address", toText(*device)}};
    if (const auto* queue = std::get_if<QueueTarget>(&target)) {
        Json json = {{"kind", "queue"}, {"name", queue->name}};
        if (!queue->server.empty())
            json["server"] = queue->server;
        return json;
    }
    return {{"kind", "file"}, {"path", std::get<FileTarget>(target).path}};
}

Json objectOf(const OutboxJob& job, std::time_t now)
{
    return {{"number", job.number},
            {"state", wordOf(job.state)},
            {"overdue", job.isOverdue(now)},
            {"held", job.waitsInQueue(now)},
            {"document", job.title},
            {"user", job.user},
            {"recipients", recipientsOf(job.recipients)},
            {"destination", targetOf(job.target)},
            {"due", momentOrNull(job.due)},
            {"queued", momentOrNull(job.queued)},
            {"ended", momentOrNull(job.ended)},
            {"bytes", job.size},
            {"chargesCard", job.chargesCard},
            {"queueJob", job.queueJob == 0 ? Json() : Json(job.queueJob)},
            {"place", orNull(job.place)},
            {"note", orNull(job.note)},
            {"keepsJob", job.hasStream},
            {"keepsDocument", !job.documentPath.empty()},
            {"sentBefore", job.sentBefore == 0 ? Json() : Json(job.sentBefore)}};
}

std::string written(const Json& json)
{
    constexpr int indentation = 2;
    return json.dump(indentation, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json summaryObject(const JobSummary& summary, const std::vector<std::string>& warnings)
{
    Json json;
    json["recipients"] = recipientsOf(summary.recipients);
    json["document"] = orNull(summary.document);
    json["pages"] = summary.pages ? Json(*summary.pages) : Json();
    json["coverPage"] = summary.hasCoverPage;
    json["note"] = orNull(summary.note);
    json["resolution"] = summary.resolution;
    json["speed"] = summary.speed;
    json["confirmationSheet"] = summary.hasConfirmation;
    json["dialingPrefix"] = orNull(summary.dialingPrefix);
    json["card"] = orNull(summary.card);
    json["destination"] = summary.plan.target ? targetOf(*summary.plan.target) : Json();
    json["sendAt"] = summary.plan.sendAt ? Json(isoMoment(*summary.plan.sendAt)) : Json();
    json["toOutbox"] = summary.plan.toOutbox;
    json["charges"] = summary.charges;
    json["notReaching"] = summary.notReaching;
    json["warnings"] = warnings;
    return json;
}

Json numberOrNull(int number) { return number == 0 ? Json() : Json(number); }

void addEnd(Json& json, const SubmissionEnd& end)
{
    const bool waits = end.kind == SubmissionEnd::Kind::waiting;
    const bool isHeld = end.kind == SubmissionEnd::Kind::held;
    json["state"] = wordOf(waits ? OutboxState::waiting : OutboxState::handedOver);
    json["held"] = isHeld;
    json["number"] = numberOrNull(end.number);
    json["queueJob"] = waits ? Json() : numberOrNull(end.receipt.job);
    json["place"] = waits ? Json() : orNull(end.receipt.place);
    json["due"] = waits || isHeld ? momentOrNull(end.due) : Json();
    for (const auto& sentence : {end.reason, end.receipt.note})
        if (!sentence.empty())
            json["warnings"].push_back(sentence);
}

Json objectOf(const JobResult& result, std::time_t now)
{
    Json json = result.job ? objectOf(*result.job, now) : Json{{"number", result.number}};
    json["error"] = orNull(result.error);
    return json;
}

} // namespace

std::string summaryJson(const JobSummary& summary, const std::vector<std::string>& warnings)
{
    return written(summaryObject(summary, warnings));
}

std::string sentJson(const JobSummary& summary, const std::vector<std::string>& warnings, const SentJob& sent)
{
    Json json = summaryObject(summary, warnings);
    for (const char* key : {"state", "held", "number", "queueJob", "place", "due"})
        json[key] = Json();
    if (sent.end)
        addEnd(json, *sent.end);
    json["sender"] = orNull(sent.sender);
    json["coverPicture"] = orNull(sent.coverPicture);
    return written(json);
}

std::string attributesJson(const AttributeAnswer& answer)
{
    const Json json = {{"lines", answer.lines},
                       {"file", orNull(answer.file)},
                       {"recipients", recipientsOf(answer.recipients)},
                       {"warnings", answer.warnings}};
    return written(json);
}

std::string resultsJson(const std::vector<JobResult>& results, std::time_t now)
{
    Json list = Json::array();
    for (const auto& result : results)
        list.push_back(objectOf(result, now));
    return written(list);
}

std::string resultLine(const JobResult& result, std::time_t now)
{
    return objectOf(result, now).dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string targetJson(const JobTarget& target) { return written(targetOf(target)); }

std::string jobJson(const OutboxJob& job, std::time_t now) { return written(objectOf(job, now)); }

std::string jobsJson(const std::vector<OutboxJob>& jobs, std::time_t now)
{
    Json list = Json::array();
    for (const auto& job : jobs)
        list.push_back(objectOf(job, now));
    return written(list);
}

} // namespace quelm
