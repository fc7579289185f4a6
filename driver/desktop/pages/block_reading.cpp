// Asks for one block after the other.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/pages/block_reading.h"

#include <memory>
#include <utility>

namespace quelm {
namespace {

constexpr gsize largestBlock = 65536;

/// What is between one block and the next.
struct Reading {
    std::shared_ptr<GCancellable> cancellation;
    BlockRead read;
};

void blockCame(GObject* source, GAsyncResult* result, gpointer data);

void readOn(GInputStream* stream, std::unique_ptr<Reading> reading)
{
    GCancellable* const cancellation = reading->cancellation.get();
    g_input_stream_read_bytes_async(stream, largestBlock, G_PRIORITY_DEFAULT, cancellation, &blockCame,
                                    reading.release());
}

void blockCame(GObject* source, GAsyncResult* result, gpointer data)
{
    std::unique_ptr<Reading> reading(static_cast<Reading*>(data));
    auto* stream = G_INPUT_STREAM(source);
    const std::unique_ptr<GBytes, void (*)(GBytes*)> bytes(
        g_input_stream_read_bytes_finish(stream, result, nullptr), g_bytes_unref);
    gsize size = 0;
    const void* content = bytes ? g_bytes_get_data(bytes.get(), &size) : nullptr;
    if (size == 0)
        return reading->read({});
    reading->read({static_cast<const char*>(content), size});
    readOn(stream, std::move(reading));
}

} // namespace

void readBlocks(GInputStream* stream, GCancellable* cancellation, BlockRead read)
{
    std::shared_ptr<GCancellable> held(G_CANCELLABLE(g_object_ref(cancellation)), g_object_unref);
    readOn(stream, std::make_unique<Reading>(Reading{std::move(held), std::move(read)}));
}

} // namespace quelm
