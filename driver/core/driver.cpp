// Starts a driver and hands its actions and queries on to its parts.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/core/driver.h"

#include "base/catalogue_folder.h"
#include "base/clock.h"
#include "base/error.h"
#include "base/translation.h"
#include "driver/boundary/host_state.h"
#include "driver/config/installation.h"
#include "driver/config/user_place.h"
#include "driver/core/callbacks.h"
#include "driver/core/confirmations.h"
#include "driver/core/kept_phonebook.h"
#include "driver/core/start_failure.h"
#include "driver/core/user_actions.h"
#include "driver/plugin/component_fax_session.h"
#include "driver/plugin/component_library.h"
#include "driver/widgets/widget_names.h"
#include "driver/widgets/widget_view.h"

namespace quelm {

namespace {

/// Fixes the clock for the life of a driver.
class ClockSetting {
public:
    explicit ClockSetting(const std::string& now) : isFixed_(!now.empty())
    {
        if (isFixed_)
            fixClock(parseLocalTime(now));
    }
    ~ClockSetting()
    {
        if (isFixed_)
            releaseClock();
    }
    ClockSetting(const ClockSetting&) = delete;
    ClockSetting& operator=(const ClockSetting&) = delete;

private:
    bool isFixed_;
};

} // namespace

struct Driver::Parts {
    ClockSetting clock;
    HostState state;
    ComponentLibrary library;
    Callbacks callbacks{state, library};
    UserActions actions{state, callbacks};
    Confirmations confirmations{state, callbacks};
    std::unique_ptr<ComponentFaxSession> faxSession;

    explicit Parts(const DriverOptions& options)
        : clock(options.now), state(resolveHome(options.home), resolveUser(options.user)),
          library(options.component.empty() ? defaultComponent(state.home) : options.component)
    {
    }

    /// What the fax dialog's Ok would take over from a box and its field; nothing when it is not ticked.
    std::optional<std::string> tickedText(std::string_view box, std::string_view field) const
    {
        const Widget* ticked = state.tree.find(box);
        const Widget* text = state.tree.find(field);
        if (!confirmations.faxDialogWaits() || ticked == nullptr || !ticked->flag() || text == nullptr)
            return std::nullopt;
        return text->text();
    }

    const Widget& existing(std::string_view name) const
    {
        const Widget* widget = state.tree.find(name);
        if (widget == nullptr)
            throw missingWidget(name, actions.namesWidgets());
        return *widget;
    }
};

Driver::Driver(const DriverOptions& options) : parts_(std::make_unique<Parts>(options))
{
    HostState& state = parts_->state;
    state.directory = options.directory;
    useTranslations(options.localeFolder.empty() ? localeFolder(state.home) : options.localeFolder);
    if (!options.device.address.empty())
        state.connectDevice(options.device);
    const UserPlace place = prepareUserPlace(options.home, state.home, state.user);
    prepareInstallation(place.location);
    state.settleAt(place.location, place.formerPhonebook);
    state.failures.hold();
    state.features.configureDefaults(options.defaults);
    if (!parts_->library.start(state.guard)) {
        throw Error(
            localized("the component %s cannot start: %s", parts_->library.path(), startFailure(state)));
    }
    if (!options.holdFailures)
        state.failures.release();
    if (options.optionValues) {
        state.features.takeOver(*options.optionValues);
    } else if (options.loadFeatures || options.saveFeatures) {
        const FeatureFile file(featureFilePath(options.configDirectory, state.user));
        state.features.load(file, options.loadFeatures, options.saveFeatures);
    }
    for (const FeatureTrouble& trouble : state.features.troubles())
        state.failures.optionsNotKept(trouble.name.empty(), trouble.line,
                                      options.holdOptionTroubles && trouble.decides);
    parts_->callbacks.setBeforeFirst([this] { handOverKeptPhonebook(parts_->state, parts_->callbacks); });
}

Driver::~Driver()
{
    parts_->state.failures.release();
    parts_->state.features.keep();
}

void Driver::press(std::string_view widget) { parts_->actions.press(widget); }

void Driver::type(std::string_view field, std::string_view text) { parts_->actions.type(field, text); }

void Driver::tick(std::string_view box, bool on) { parts_->actions.tick(box, on); }

void Driver::choose(std::string_view widget, int value) { parts_->actions.choose(widget, value); }

void Driver::select(std::string_view list, const std::vector<int>& rows)
{
    parts_->actions.select(list, rows);
}

void Driver::closeWindow(std::string_view window) { parts_->actions.closeWindow(window); }

void Driver::answer(bool yes) { parts_->actions.answer(yes); }

void Driver::call(std::string_view exportedName) { parts_->actions.call(exportedName); }

WidgetView Driver::show(std::string_view widget) const { return viewOf(parts_->existing(widget)); }

std::vector<std::vector<std::string>> Driver::rows(std::string_view list) const
{
    const Widget& widget = parts_->existing(list);
    if (!widget.isList() && parts_->actions.namesWidgets())
        throw Error(localized("\"%s\" is no list", list));
    if (!widget.isList())
        throw missingWidget(list, false);
    return rowsOf(widget);
}

std::vector<std::string> Driver::windows() const
{
    std::vector<std::string> names;
    for (const auto& window : parts_->state.tree.windows())
        if (window->isWindow() && window->visible())
            names.push_back(window->name());
    return names;
}

std::optional<QuestionView> Driver::pendingQuestion() const
{
    const Question* question = parts_->state.questions.top();
    return question == nullptr ? std::nullopt : std::optional(QuestionView{question->kind, question->text});
}

std::map<std::string, std::string> Driver::optionValues() const { return parts_->state.features.texts(); }

const std::string& Driver::helpTopic() const { return parts_->callbacks.helpTopic(); }

int Driver::failedCallbacks() const { return parts_->state.guard.failures(); }

FaxSession& Driver::faxSession()
{
    if (!parts_->faxSession)
        parts_->faxSession = std::make_unique<ComponentFaxSession>(parts_->library, parts_->state.guard);
    return *parts_->faxSession;
}

void* Driver::resource(std::string_view name) const
{
    const auto found = parts_->state.resources.find(name);
    return found == parts_->state.resources.end() ? nullptr : found->second;
}

void Driver::takeOverShownChoices() { parts_->confirmations.takeOver(); }

bool Driver::choicesTakenOver() const { return !parts_->confirmations.faxDialogWaits(); }

bool Driver::coverSetUpTakenOver() const
{
    return parts_->confirmations.isTakenOver(widget_names::lanFaxCoverOkButton);
}

bool Driver::senderTakenOver() const
{
    return parts_->confirmations.isTakenOver(widget_names::lanFaxSenderOkButton);
}

bool Driver::choicesConfirmed() const { return parts_->confirmations.userConfirmedFaxDialog(); }

bool Driver::coverPageWillGo()
{
    if (!parts_->confirmations.faxDialogWaits())
        return faxSession().coverPageChosen();
    return parts_->state.features.number(widget_names::lanFaxCoverSheetOption).value_or(0) != 0;
}

std::string Driver::dialingPrefixToUse()
{
    auto shown = parts_->tickedText(widget_names::lanFaxDialingPrefix, widget_names::lanFaxDialingPrefixInfo);
    return shown ? *std::move(shown) : faxSession().texts().dialingPrefix;
}

std::string Driver::creditCardToCharge()
{
    auto shown = parts_->tickedText(widget_names::lanFaxCreditCard, widget_names::lanFaxCreditCardInfo);
    return shown ? *std::move(shown) : faxSession().texts().creditCard;
}

void Driver::requireReadableOptions()
{
    for (const FeatureTrouble& trouble : parts_->state.features.troubles())
        if (trouble.name.empty())
            failWith(trouble.line);
}

void Driver::requireKnownOptions()
{
    for (const FeatureTrouble& trouble : parts_->state.features.troubles())
        if (trouble.decides)
            failWith(trouble.line);
}

std::vector<std::string> Driver::unknownOptions() const
{
    std::vector<std::string> lines;
    for (const FeatureTrouble& trouble : parts_->state.features.troubles())
        if (trouble.decides)
            lines.push_back(trouble.line);
    return lines;
}

void Driver::settleOption(std::string_view name) { parts_->state.features.settle(name); }

const LastFailure& Driver::lastFailure() const { return parts_->state.failures.last(); }

void Driver::failWith(const std::string& line)
{
    parts_->state.failures.leaveOut(line);
    throw Error(line);
}

void Driver::releaseFailures() { parts_->state.failures.release(); }

bool Driver::asksDevice() const { return parts_->state.device != nullptr; }

const DirectorySettings& Driver::directorySettings() const { return parts_->state.directory; }

void Driver::setProgramWaiting(std::function<int(pid_t program)> wait)
{
    parts_->state.waitForProgram = std::move(wait);
}

const std::string& Driver::home() const { return parts_->state.home; }

const std::string& Driver::location() const { return parts_->state.location; }

const std::string& Driver::user() const { return parts_->state.user; }

UserActions& Driver::actions() { return parts_->actions; }

Callbacks& Driver::callbacks() { return parts_->callbacks; }

WidgetTree& Driver::widgets() { return parts_->state.tree; }

Features& Driver::features() { return parts_->state.features; }

Questions& Driver::questions() { return parts_->state.questions; }

ComponentLibrary& Driver::component() { return parts_->library; }

} // namespace quelm
