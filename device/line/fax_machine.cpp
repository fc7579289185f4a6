// Sets a fax machine of the modem library up, and follows what it does.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/fax_machine.h"

#include "device/line/modem_library.h"

#include <algorithm>
#include <new>

namespace quelm::device {
namespace {

struct FreeFax {
    void operator()(fax_state_t* fax) const
    {
        fax_release(fax);
        fax_free(fax);
    }
};

/// The modems of a machine that is no faster than so many bit/s.
int modemsFor(int fastest)
{
    constexpr int ofV29 = 9600;
    constexpr int ofV17 = 14400;
    int modems = T30_SUPPORT_V27TER;
    if (fastest >= ofV29)
        modems |= T30_SUPPORT_V29;
    if (fastest >= ofV17)
        modems |= T30_SUPPORT_V17;
    return modems;
}

} // namespace

struct FaxMachine::State {
    std::unique_ptr<fax_state_t, FreeFax> fax;
    t30_state_t* protocol = nullptr;
    std::optional<int> paperForPages;
    bool calls = false;
    bool ended = false;
    bool agreed = false;
    bool outOfPaper = false;
    int code = T30_ERR_OK;
    int damagedRows = 0;

    static void atEnd(t30_state_t* /*protocol*/, void* machine, int code)
    {
        auto* state = static_cast<State*>(machine);
        state->ended = true;
        state->code = code;
    }

    static int atPageEnd(t30_state_t* protocol, void* machine, int /*command*/)
    {
        auto* state = static_cast<State*>(machine);
        if (state->calls)
            return T30_ERR_OK;
        t30_stats_t statistics;
        t30_get_transfer_statistics(protocol, &statistics);
        state->damagedRows += statistics.bad_rows;
        if (state->paperForPages && statistics.pages_rx > *state->paperForPages) {
            constexpr int forLong = 1000; // times; the caller gives up before
            state->outOfPaper = true;
            t30_set_receiver_not_ready(protocol, forLong);
        }
        return T30_ERR_OK;
    }

    static void atFrame(t30_state_t* /*protocol*/, void* machine, int /*incoming*/, const std::uint8_t* frame,
                        int length)
    {
        constexpr int control = 2;              // behind the address and the control field
        constexpr std::uint8_t toCaller = 0xFE; // the last bit says who the frame is for
        if (length > control && (frame[control] & toCaller) == T30_CFR)
            static_cast<State*>(machine)->agreed = true;
    }
};

FaxMachine::FaxMachine(const FaxMachineSettings& settings) : state_(std::make_unique<State>())
{
    prepareModemLibrary();
    state_->fax.reset(fax_init(nullptr, settings.calls ? 1 : 0));
    if (state_->fax == nullptr)
        throw std::bad_alloc();
    state_->calls = settings.calls;
    state_->paperForPages = settings.paperForPages;
    fax_set_transmit_on_idle(state_->fax.get(), 1);
    t30_state_t* protocol = fax_get_t30_state(state_->fax.get());
    state_->protocol = protocol;

    t30_set_supported_modems(protocol, modemsFor(settings.fastest));
    t30_set_supported_compressions(protocol, T30_SUPPORT_T4_1D_COMPRESSION | T30_SUPPORT_T4_2D_COMPRESSION |
                                                 T30_SUPPORT_T6_COMPRESSION);
    t30_set_supported_resolutions(protocol, T30_SUPPORT_STANDARD_RESOLUTION | T30_SUPPORT_FINE_RESOLUTION |
                                                T30_SUPPORT_SUPERFINE_RESOLUTION | T30_SUPPORT_R8_RESOLUTION);
    t30_set_supported_image_sizes(protocol, T30_SUPPORT_215MM_WIDTH | T30_SUPPORT_UNLIMITED_LENGTH |
                                                T30_SUPPORT_A4_LENGTH | T30_SUPPORT_US_LETTER_LENGTH |
                                                T30_SUPPORT_US_LEGAL_LENGTH);
    t30_set_supported_t30_features(protocol, T30_SUPPORT_SUB_ADDRESSING);
    t30_set_ecm_capability(protocol, settings.errorCorrection ? 1 : 0);
    t30_set_rx_encoding(protocol, T4_COMPRESSION_ITU_T6);
    t30_set_tx_ident(protocol, settings.identity.c_str());
    if (settings.calls) {
        t30_set_tx_file(protocol, settings.file.c_str(), -1, -1);
        if (!settings.subAddress.empty())
            t30_set_tx_sub_address(protocol, settings.subAddress.c_str());
    } else {
        t30_set_rx_file(protocol, settings.file.c_str(), -1);
    }
    t30_set_phase_e_handler(protocol, &State::atEnd, state_.get());
    t30_set_phase_d_handler(protocol, &State::atPageEnd, state_.get());
    t30_set_real_time_frame_handler(protocol, &State::atFrame, state_.get());
}

FaxMachine::~FaxMachine() = default;

void FaxMachine::speak(Samples& samples)
{
    const int made = fax_tx(state_->fax.get(), samples.data(), static_cast<int>(samples.size()));
    std::fill(samples.begin() + std::max(made, 0), samples.end(), std::int16_t{0});
}

void FaxMachine::listen(Samples samples)
{
    fax_rx(state_->fax.get(), samples.data(), static_cast<int>(samples.size()));
}

void FaxMachine::hangUp() { t30_terminate(state_->protocol); }

bool FaxMachine::hasEnded() const { return state_->ended; }

int FaxMachine::code() const { return state_->code; }

FaxMachineState FaxMachine::state() const
{
    t30_stats_t statistics;
    t30_get_transfer_statistics(state_->protocol, &statistics);
    return {.pages = state_->calls ? statistics.pages_tx : statistics.pages_rx,
            .bitRate = statistics.bit_rate,
            .errorCorrection = statistics.error_correcting_mode != 0,
            .repeatedFrames = statistics.error_correcting_mode_retries};
}

bool FaxMachine::hasAgreed() const { return state_->agreed; }

int FaxMachine::damagedRows() const { return state_->damagedRows; }

bool FaxMachine::isOutOfPaper() const { return state_->outOfPaper; }

std::string FaxMachine::otherIdentity() const
{
    const char* identity = t30_get_rx_ident(state_->protocol);
    return identity == nullptr ? "" : identity;
}

std::string FaxMachine::otherSubAddress() const
{
    const char* address = t30_get_rx_sub_address(state_->protocol);
    return address == nullptr ? "" : address;
}

} // namespace quelm::device
