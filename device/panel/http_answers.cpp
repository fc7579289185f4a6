// Has the HTTP library read requests and write answers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/http_answers.h"

#include "base/file_io.h"
#include "device/panel/host_check.h"
#include "device/panel/request_head.h"

#include <fcntl.h>
#include <httplib.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

namespace quelm::device {
namespace {

/// Why the request that this thread answers is refused, whatever it asks for; 0 for one that is not.
thread_local int refusedWith = 0;

/// Hands the library the head that was read, and writes what it answers. Which of these functions the library
/// asks for differs by its version (0.26 has other names than 0.18 for those that wait), and so none is
/// marked to override.
class BoundedStream : public httplib::Stream { // NOLINTBEGIN(*-use-override,*-explicit-virtual-functions)
public:
    BoundedStream(const FileHandle& socket, std::string head, std::chrono::milliseconds patience)
        : socket_(socket), head_(std::move(head)), patience_(patience)
    {
    }

    bool is_readable() const { return true; }
    bool wait_readable() const { return true; }
    bool is_writable() const { return wait_writable(); }
    bool wait_writable() const
    {
        pollfd waiting{socket_.get(), POLLOUT, 0};
        return ::poll(&waiting, 1, static_cast<int>(patience_.count())) > 0 &&
               (waiting.revents & POLLOUT) != 0;
    }
    ssize_t read(char* bytes, size_t size)
    {
        const std::size_t taken = head_.copy(bytes, size, offset_);
        offset_ += taken;
        return static_cast<ssize_t>(taken);
    }
    ssize_t write(const char* bytes, size_t size)
    {
        while (wait_writable()) {
            const auto written = ::send(socket_.get(), bytes, size, MSG_NOSIGNAL);
            if (written >= 0 || (errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR))
                return written;
        }
        return -1;
    }
    void get_remote_ip_and_port(std::string&, int&) const {}
    void get_local_ip_and_port(std::string&, int&) const {}
    socket_t socket() const { return socket_.get(); }
    time_t duration() const { return 0; }

private:
    const FileHandle& socket_;
    std::string head_;
    std::size_t offset_ = 0;
    std::chrono::milliseconds patience_;
}; // NOLINTEND(*-use-override,*-explicit-virtual-functions)

/// The library takes it upon itself to ignore a signal in the whole process.
class PipeSignalKept {
public:
    PipeSignalKept() { ::sigaction(SIGPIPE, nullptr, &before_); }
    ~PipeSignalKept() { ::sigaction(SIGPIPE, &before_, nullptr); }
    PipeSignalKept(const PipeSignalKept&) = delete;
    PipeSignalKept& operator=(const PipeSignalKept&) = delete;

private:
    struct sigaction before_ = {};
};

const httplib::Headers& headersOfAll()
{
    static const httplib::Headers headers = {
        {"Content-Security-Policy",
         "default-src 'none'; img-src 'self'; style-src 'self'; base-uri 'none'; form-action 'none'; "
         "frame-ancestors 'none'"},
        {"X-Content-Type-Options", "nosniff"},
        {"Referrer-Policy", "no-referrer"},
        {"Cross-Origin-Resource-Policy", "same-origin"},
        {"Cache-Control", "no-store"},
    };
    return headers;
}

bool isWellFormed(const httplib::Request& request)
{
    return request.get_header_value_count("Host") == 1 && !request.path.empty() &&
           request.path.front() == '/';
}

PanelRequest panelRequest(const httplib::Request& request)
{
    return {request.path, request.get_param_value("before"), request.get_param_value("part")};
}

/// Has the library send a file piece by piece. False when it is gone.
bool sendFile(httplib::Response& response, const PanelAnswer& answer)
{
    auto file = std::make_shared<FileHandle>(::open(answer.file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    struct stat status = {};
    if (!file->isOpen() || ::fstat(file->get(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    if (status.st_size == 0) {
        response.set_content("", answer.type);
        return true;
    }
    response.set_content_provider(
        static_cast<std::size_t>(status.st_size), answer.type,
        [file, name = answer.file.string()](std::size_t offset, std::size_t left, httplib::DataSink& sink) {
            std::array<char, 64 << 10U> piece{};
            const auto size = quelm::readFully(file->get(), piece.data(), std::min(left, piece.size()),
                                               static_cast<long long>(offset), name);
            return size > 0 && sink.write(piece.data(), size);
        });
    return true;
}

void fill(httplib::Response& response, const PanelAnswer& answer)
{
    response.status = answer.status;
    if (answer.file.empty())
        response.set_content(answer.body, answer.type);
    else if (!sendFile(response, answer))
        fill(response, refusal(404));
    if (answer.status == 405)
        response.set_header("Allow", "GET, HEAD");
}

} // namespace

class HttpAnswers::Server : public httplib::Server {
public:
    Server(std::string bound, Answer answer) : bound_(std::move(bound)), answer_(std::move(answer))
    {
        // For a server without a socket of its own the library would leave off in the middle of a file.
        svr_sock_ = 0;
        set_default_headers(headersOfAll());
        set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
            fill(response, answerTo(request));
            return HandlerResponse::Handled;
        });
        // What the library refuses by itself.
        set_error_handler(HandlerWithResponse([](const httplib::Request&, httplib::Response& response) {
            if (!response.body.empty() || response.content_length_ > 0)
                return HandlerResponse::Unhandled;
            response.set_content(refusal(response.status).body, refusal(response.status).type);
            return HandlerResponse::Handled;
        }));
        set_exception_handler([](const httplib::Request&, httplib::Response& response,
                                 const std::exception_ptr&) { fill(response, refusal(500)); });
    }

    void answerOn(httplib::Stream& stream) { process(*this, stream); }

private:
    /// Later versions than 0.14 are told both ends' addresses, which nobody asks here.
    template <typename Library>
    static void process(Library& library, httplib::Stream& stream)
    {
        bool isClosed = false;
        const auto asItCame = [](httplib::Request&) {};
        if constexpr (requires { library.process_request(stream, true, isClosed, asItCame); })
            library.process_request(stream, true, isClosed, asItCame);
        else
            library.process_request(stream, "", 0, "", 0, true, isClosed, asItCame);
    }

    PanelAnswer answerTo(const httplib::Request& request) const
    {
        if (refusedWith != 0)
            return refusal(refusedWith);
        if (!isWellFormed(request))
            return refusal(400);
        if (!isOwnHost(request.get_header_value("Host"), bound_))
            return refusal(421);
        if (request.method != "GET" && request.method != "HEAD")
            return refusal(405);
        return answer_(panelRequest(request));
    }

    std::string bound_;
    Answer answer_;
};

HttpAnswers::HttpAnswers(std::string bound, std::chrono::milliseconds patience, Answer answer)
    : patience_(patience)
{
    const PipeSignalKept kept;
    server_ = std::make_unique<Server>(std::move(bound), std::move(answer));
}

HttpAnswers::~HttpAnswers() = default;

void HttpAnswers::serve(const FileHandle& socket)
{
    const auto head = readHead(socket, patience_);
    if (head.kind == RequestHead::Kind::none)
        return;
    refusedWith = head.kind == RequestHead::Kind::tooLong ? 431 : 0;
    BoundedStream stream(socket, refusedWith != 0 ? "GET / HTTP/1.1\r\n\r\n" : plainHead(head.bytes),
                         patience_);
    server_->answerOn(stream);

    // What the browser still sends is read: closing with something unread would take the answer back.
    ::shutdown(socket.get(), SHUT_WR);
    const auto deadline =
        std::chrono::steady_clock::now() + std::min(patience_, std::chrono::milliseconds(2000));
    std::array<char, 4096> ignored{};
    while (std::chrono::steady_clock::now() < deadline) {
        pollfd waiting{socket.get(), POLLIN, 0};
        ::poll(&waiting, 1, 100);
        const auto size = ::recv(socket.get(), ignored.data(), ignored.size(), 0);
        if (size == 0 || (size < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR))
            return;
    }
}

} // namespace quelm::device
