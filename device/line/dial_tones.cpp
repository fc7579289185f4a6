// Presses the keys of a telephone, and listens at the exchange.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/released_by.h"
#include "base/texts.h"
#include "base/translation.h"
#include "device/line/fax_call.h"
#include "device/line/modem_library.h"
#include "device/line/samples.h"

#include <array>
#include <memory>
#include <new>
#include <string_view>

namespace quelm::device {
namespace {

using std::chrono::milliseconds;

using Sender = std::unique_ptr<dtmf_tx_state_t, ReleasedBy<dtmf_tx_free>>;
using Receiver = std::unique_ptr<dtmf_rx_state_t, ReleasedBy<dtmf_rx_free>>;

constexpr char pause = ',';
constexpr milliseconds pauseTime = std::chrono::seconds(2);
constexpr milliseconds toneTime{80}; ///< the silence behind it lasts as long

/// The exchange's end of the line: keys, and the silence between them.
class KeyListener {
public:
    KeyListener() : receiver_(dtmf_rx_init(nullptr, nullptr, nullptr))
    {
        if (receiver_ == nullptr)
            throw std::bad_alloc();
    }

    void listen(const Samples& samples)
    {
        dtmf_rx(receiver_.get(), samples.data(), static_cast<int>(samples.size()));
        sinceKey_ += pieceTime;
        std::array<char, 16> keys{};
        const auto count = dtmf_rx_get(receiver_.get(), keys.data(), static_cast<int>(keys.size()) - 1);
        if (count == 0)
            return;
        addPauses();
        heard_.append(keys.data(), count);
    }

    /// All that was heard up to the end of dialling.
    std::string heard()
    {
        addPauses();
        return heard_;
    }

private:
    void addPauses()
    {
        // A key is heard a little behind its beginning; what that adds is far from a pause.
        heard_.append(static_cast<std::size_t>((sinceKey_ + pauseTime / 4) / pauseTime), pause);
        sinceKey_ = milliseconds::zero();
    }

    Receiver receiver_;
    std::string heard_;
    milliseconds sinceKey_{0};
};

} // namespace

std::string dialTones(const std::string& keys, milliseconds& duration)
{
    constexpr std::string_view known = "0123456789*#,";
    if (const auto other = keys.find_first_not_of(known); other != std::string::npos)
        // Translators: the keys of a telephone number, and the part of them that begins with the wrong one.
        throw Error(localized("\"%s\": a telephone has no key for \"%s\"", shownText(keys),
                              shownText(std::string_view(keys).substr(other))));
    prepareModemLibrary();
    const Sender sender(dtmf_tx_init(nullptr));
    if (sender == nullptr)
        throw std::bad_alloc();
    dtmf_tx_set_timing(sender.get(), static_cast<int>(toneTime.count()), static_cast<int>(toneTime.count()));
    KeyListener exchange;
    for (const char key : keys) {
        if (key != pause)
            dtmf_tx_put(sender.get(), &key, 1);
        const milliseconds length = key == pause ? pauseTime : 2 * toneTime;
        for (milliseconds passed{0}; passed < length; passed += pieceTime) {
            Samples samples{};
            if (key != pause)
                dtmf_tx(sender.get(), samples.data(), static_cast<int>(samples.size()));
            exchange.listen(samples);
        }
        duration += length;
    }
    return exchange.heard();
}

} // namespace quelm::device
