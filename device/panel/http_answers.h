// Speaks HTTP on a connection.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PANEL_HTTP_ANSWERS_H
#define DEVICE_PANEL_HTTP_ANSWERS_H

#include "base/file_handle.h"
#include "device/panel/panel_site.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace quelm::device {

/// Answers one request on each connection, and closes it. Any number of threads may use one object.
///
/// Only GET and HEAD are allowed, without a body; the Host header has to be right. Every answer forbids
/// scripts and whatever else lies elsewhere, and to be kept.
class HttpAnswers {
public:
    using Answer = std::function<PanelAnswer(const PanelRequest&)>;

    /// `bound` is the numeric address at which it is served. What `answer` throws becomes status 500.
    HttpAnswers(std::string bound, std::chrono::milliseconds patience, Answer answer);
    ~HttpAnswers();
    HttpAnswers(const HttpAnswers&) = delete;
    HttpAnswers& operator=(const HttpAnswers&) = delete;

    /// Reads a request from a non-blocking socket and answers it. Ends when the browser is done, does not go
    /// on for as long as patience lasts, or the socket is shut down.
    void serve(const FileHandle& socket);

private:
    class Server;
    std::unique_ptr<Server> server_;
    std::chrono::milliseconds patience_;
};

} // namespace quelm::device

#endif
