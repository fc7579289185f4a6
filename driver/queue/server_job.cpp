// Asks a print server about its jobs, and cancels them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/queue/server_job.h"

#include <array>
#include <string_view>
#include <utility>

namespace quelm {
namespace {

constexpr const char* jobsPage = "/jobs";

constexpr std::array wantedAttributes{"job-id",
                                      "job-name",
                                      "job-state",
                                      "job-state-reasons",
                                      "number-of-documents",
                                      "time-at-processing",
                                      "job-hold-until"};

std::string tokenSuffix(const std::string& token)
{
    return token.empty() ? std::string() : " [quelm " + token + "]";
}

bool hasValue(ipp_attribute_t* attribute, std::string_view wanted)
{
    for (int at = 0; at < ippGetCount(attribute); ++at) {
        const char* value = ippGetString(attribute, at, nullptr);
        if (value != nullptr && value == wanted)
            return true;
    }
    return false;
}

/// 0 for an attribute without a value, such as the time of something that did not happen.
int numberIn(ipp_attribute_t* attribute)
{
    const auto kind = ippGetValueTag(attribute);
    return kind == IPP_TAG_INTEGER || kind == IPP_TAG_ENUM ? ippGetInteger(attribute, 0) : 0;
}

std::string textIn(ipp_attribute_t* attribute)
{
    const char* text = ippGetString(attribute, 0, nullptr);
    return text != nullptr ? text : "";
}

void take(ServerJob& job, ipp_attribute_t* attribute)
{
    const std::string_view name = ippGetName(attribute);
    if (name == "job-id")
        job.number = numberIn(attribute);
    else if (name == "job-name")
        job.name = textIn(attribute);
    else if (name == "job-state")
        job.state = numberIn(attribute);
    else if (name == "job-state-reasons")
        job.isIncoming = hasValue(attribute, "job-incoming");
    else if (name == "number-of-documents")
        job.documents = numberIn(attribute);
    else if (name == "time-at-processing")
        job.wasProcessed = numberIn(attribute) > 0;
    else if (name == "job-hold-until")
        job.holdUntil = textIn(attribute);
}

} // namespace

std::string serverJobName(const std::string& title, const std::string& token)
{
    const auto suffix = ippName(tokenSuffix(token));
    return ippName(title.empty() ? "Fax" : title, longestIppName - suffix.size()) + suffix;
}

bool bearsToken(const std::string& name, const std::string& token)
{
    return !token.empty() && name.ends_with(tokenSuffix(token));
}

void askForServerJobs(const IppMessage& request)
{
    ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                  static_cast<int>(wantedAttributes.size()), nullptr, wantedAttributes.data());
}

std::vector<ServerJob> serverJobsIn(const IppAnswer& answer)
{
    std::vector<ServerJob> jobs;
    for (const auto& attributes : groupsOf(answer, IPP_TAG_JOB))
        for (ServerJob& job = jobs.emplace_back(); auto* attribute : attributes)
            take(job, attribute);
    return jobs;
}

IppMessage newJobRequest(ipp_op_t operation, const std::string& queue, const std::string& user, int number)
{
    auto request = newQueueRequest(operation, queue, user);
    ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", number);
    return request;
}

ServerJobAnswer askForServerJob(CupsServer& server, const std::string& queue, const std::string& user,
                                int number)
{
    auto request = newJobRequest(IPP_OP_GET_JOB_ATTRIBUTES, queue, user, number);
    askForServerJobs(request);
    const auto answer = server.ask(std::move(request), jobsPage);
    if (answer.message != nullptr && answer.status == IPP_STATUS_ERROR_NOT_FOUND)
        return {};
    if (!answer.isSuccess())
        return {{}, answer.reason};
    auto jobs = serverJobsIn(answer);
    ServerJob job = jobs.empty() ? ServerJob() : std::move(jobs.front());
    job.number = number;
    return {std::move(job), {}};
}

CancelEnd cancelServerJob(CupsServer& server, const std::string& queue, const std::string& user, int number)
{
    const auto answer = server.ask(newJobRequest(IPP_OP_CANCEL_JOB, queue, user, number), jobsPage);
    if (answer.isSuccess())
        return CancelEnd::cancelled;
    if (answer.message != nullptr && answer.status == IPP_STATUS_ERROR_NOT_FOUND)
        return CancelEnd::gone;
    // It has ended already: the server does not say by which status how.
    const auto told = askForServerJob(server, queue, user, number);
    return told.job && told.job->isEndedEarly() ? CancelEnd::cancelled : CancelEnd::refused;
}

} // namespace quelm
