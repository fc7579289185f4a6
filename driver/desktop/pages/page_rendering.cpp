// Runs Ghostscript as an asynchronous subprocess, and parts its output into pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/pages/page_rendering.h"

#include "base/error.h"
#include "base/ghostscript/ghostscript.h"
#include "base/ghostscript/png_stream.h"
#include "base/system_reason.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/desktop/pages/block_reading.h"

#include <fcntl.h>
#include <gio/gio.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <optional>
#include <utility>
#include <vector>

namespace quelm {
namespace {

template <typename Object>
struct Unref {
    void operator()(Object* object) const { g_object_unref(object); }
};
template <typename Object>
using Reference = std::unique_ptr<Object, Unref<Object>>;

constexpr std::size_t mostMessageBytes = 16384;
constexpr std::string_view pageCountMark = "quelm pages: ";

/// By this name Ghostscript reads it in blocks, by its own ("-") byte by byte.
constexpr char standardInput[] = "/proc/self/fd/0";

/// The arguments of Ghostscript; the stream is its standard input.
std::vector<std::string> argumentsFor(const RenderingRequest& request)
{
    std::vector<std::string> arguments = {"-q"};
    if (request.pages == RenderingRequest::Pages::count) {
        arguments.insert(arguments.end(), {"-sDEVICE=nullpage", standardInput, "-c",
                                           "(\\n" + std::string(pageCountMark) +
                                               ") print currentpagedevice /PageCount get = flush"});
        return arguments;
    }
    arguments.insert(arguments.end(),
                     {"-sDEVICE=png16m", "-dTextAlphaBits=4", "-dGraphicsAlphaBits=4",
                      "-r" + std::to_string(request.resolution), "-sOutputFile=%stdout", standardInput});
    return arguments;
}

int pageCountIn(std::string_view messages)
{
    const auto mark = messages.rfind(pageCountMark);
    int count = -1;
    if (mark != std::string_view::npos) {
        messages.remove_prefix(mark + pageCountMark.size());
        std::from_chars(messages.data(), messages.data() + messages.size(), count);
    }
    return count;
}

} // namespace

/// One run. It holds itself while Ghostscript lives or output is being read.
class PageRendering::Run : public std::enable_shared_from_this<Run> {
public:
    Run(const RenderingRequest& request, PageDrawn drawn, Ended ended)
        : request_(request), drawn_(std::move(drawn)), ended_(std::move(ended)),
          pictures_(request.pictureLimit), cancellation_(g_cancellable_new())
    {
    }

    ~Run()
    {
        if (timer_ != 0)
            g_source_remove(timer_);
    }

    void start(const FileHandle& stream, std::function<void()> forget)
    {
        forget_ = std::move(forget);
        // Opened anew, because runs that share a descriptor would share how far they have read.
        FileHandle input(
            ::open(("/proc/self/fd/" + std::to_string(stream.get())).c_str(), O_RDONLY | O_CLOEXEC));
        if (!input.isOpen())
            return endSoon(systemReason(errno));
        try {
            startProcess(std::move(input));
        } catch (const Error& error) {
            return endSoon(error.what());
        }
        timer_ = g_timeout_add(static_cast<guint>(request_.timeLimit.count()), &Run::outOfTime, this);
        read(g_subprocess_get_stdout_pipe(process_.get()), &Run::takePictures);
        read(g_subprocess_get_stderr_pipe(process_.get()), &Run::takeMessages);
        ++unfinished_;
        g_subprocess_wait_async(process_.get(), nullptr, &Run::exited, hold());
    }

    void cancel()
    {
        silent_ = true;
        stop();
    }

private:
    using Hold = std::shared_ptr<Run>;

    /// Keeps the run alive until a callback has come.
    Hold* hold() { return new Hold(shared_from_this()); }
    static Hold release(gpointer data)
    {
        const std::unique_ptr<Hold> held(static_cast<Hold*>(data));
        return *held;
    }

    void startProcess(FileHandle input)
    {
        GhostscriptBounds bounds;
        bounds.program = request_.ghostscript;
        bounds.timeLimit = request_.timeLimit;
        command_.emplace(bounds, argumentsFor(request_));
        const Reference<GSubprocessLauncher> launcher(g_subprocess_launcher_new(
            static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_PIPE)));
        g_subprocess_launcher_take_stdin_fd(launcher.get(), input.release());
        g_subprocess_launcher_set_environ(launcher.get(), pointersTo(command_->environment()).data());
        GError* error = nullptr;
        process_.reset(
            g_subprocess_launcher_spawnv(launcher.get(), pointersTo(command_->arguments()).data(), &error));
        if (!process_) {
            const std::string reason = error->message;
            g_error_free(error);
            throw Error(reason);
        }
    }

    void stop()
    {
        // Not SIGKILL: the supervisor ends Ghostscript and clears up.
        if (process_)
            g_subprocess_send_signal(process_.get(), SIGTERM);
        g_cancellable_cancel(cancellation_.get());
    }

    /// Stops drawing; what is drawn already stays.
    void giveUp(const std::string& reason)
    {
        if (trouble_.empty())
            trouble_ = reason;
        stop();
    }

    static gboolean outOfTime(gpointer data)
    {
        auto& run = *static_cast<Run*>(data);
        run.timer_ = 0;
        run.giveUp(translated("Drawing the pages took too long"));
        return G_SOURCE_REMOVE;
    }

    /// Reads what Ghostscript writes into one of its pipes.
    void read(GInputStream* pipe, void (Run::*take)(std::string_view))
    {
        ++unfinished_;
        readBlocks(pipe, cancellation_.get(), [run = shared_from_this(), take](std::string_view bytes) {
            if (bytes.empty())
                return run->finish();
            (run.get()->*take)(bytes);
        });
    }

    void takePictures(std::string_view bytes)
    {
        if (silent_ || !trouble_.empty() || enough_)
            return;
        total_ += bytes.size();
        try {
            pictures_.append(bytes);
            while (!silent_ && !enough_) {
                auto picture = pictures_.next();
                if (!picture)
                    break;
                ++drawnPages_;
                enough_ = request_.pages == RenderingRequest::Pages::first;
                drawn_(std::move(*picture));
            }
        } catch (const Error& error) {
            return giveUp(error.what());
        }
        if (enough_)
            stop();
        else if (total_ > request_.totalLimit)
            giveUp(localizedCount("Only the first page is shown, because the document is very large",
                                  "Only the first %d pages are shown, because the document is very large",
                                  static_cast<unsigned long>(drawnPages_), drawnPages_));
    }

    void takeMessages(std::string_view bytes)
    {
        messages_ += bytes;
        // The first error tells the reason; the page count comes last.
        if (messages_.size() > mostMessageBytes)
            messages_.erase(mostMessageBytes / 2, messages_.size() - mostMessageBytes);
    }

    static void exited(GObject* process, GAsyncResult* result, gpointer data)
    {
        const Hold run = release(data);
        g_subprocess_wait_finish(G_SUBPROCESS(process), result, nullptr);
        run->finish();
    }

    /// A pipe has ended, or Ghostscript has; behind the last of them the run has.
    void finish()
    {
        if (--unfinished_ > 0)
            return;
        const bool successful = g_subprocess_get_if_exited(process_.get()) != FALSE &&
                                g_subprocess_get_exit_status(process_.get()) == 0;
        if (!successful && !enough_ && trouble_.empty()) {
            const std::string error = ghostscriptError(messages_);
            trouble_ = error.empty() ? translated("Ghostscript could not draw the pages")
                                     : localized("Ghostscript could not draw the pages: %s", error);
        }
        end();
    }

    /// Ends a run that did not even begin.
    void endSoon(const std::string& reason)
    {
        trouble_ = reason;
        g_idle_add_full(
            G_PRIORITY_DEFAULT,
            [](gpointer data) {
                release(data)->end();
                return gboolean{G_SOURCE_REMOVE};
            },
            hold(), nullptr);
    }

    void end()
    {
        if (silent_)
            return;
        silent_ = true;
        RenderingEnd outcome;
        outcome.trouble = trouble_;
        outcome.pageCount =
            request_.pages == RenderingRequest::Pages::count ? pageCountIn(messages_) : drawnPages_;
        forget_();
        ended_(outcome);
    }

    const RenderingRequest request_;
    const PageDrawn drawn_;
    const Ended ended_;
    std::function<void()> forget_;
    PngStream pictures_;
    Reference<GCancellable> cancellation_;
    std::optional<GhostscriptCommand> command_; ///< its folder outlives the process
    Reference<GSubprocess> process_;
    std::string messages_;
    std::string trouble_;
    std::size_t total_ = 0;
    int drawnPages_ = 0;
    guint timer_ = 0;
    bool enough_ = false;
    bool silent_ = false;
    int unfinished_ = 0; ///< the pipes and the process that have not ended
};

PageRendering::PageRendering() = default;

PageRendering::~PageRendering() { cancel(); }

void PageRendering::start(const FileHandle& stream, const RenderingRequest& request, PageDrawn drawn,
                          Ended ended)
{
    cancel();
    run_ = std::make_shared<Run>(request, std::move(drawn), std::move(ended));
    run_->start(stream, [this] { run_.reset(); });
}

void PageRendering::cancel()
{
    if (run_)
        run_->cancel();
    run_.reset();
}

} // namespace quelm
