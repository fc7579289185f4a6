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

} // namespace

std::string summaryJson(const JobSummary& summary, const std::vector<std::string>& warnings)
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
    return written(json);
}

std::string jobJson(const OutboxJob& job, std::time_t now) { return written(objectOf(job, now)); }

std::string jobsJson(const std::vector<OutboxJob>& jobs, std::time_t now)
{
    Json list = Json::array();
    for (const auto& job : jobs)
        list.push_back(objectOf(job, now));
    return written(list);
}

} // namespace quelm
