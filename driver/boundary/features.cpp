// What host/features.h declares: option values that are asked for by name.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/features.h"

#include "driver/boundary/host_state.h"

namespace {

using Action = int (quelm::Features::*)(std::string_view);

int onFeatures(char* tokenList, Action action)
{
    return quelm::atBoundary(0, [&] {
        quelm::HostState* state = quelm::HostState::current();
        return state == nullptr || tokenList == nullptr ? 0 : (state->features.*action)(tokenList);
    });
}

/// For actions that put values back, sensitivities among them.
int onFeaturesAndBindings(char* tokenList, Action action)
{
    const int count = onFeatures(tokenList, action);
    if (quelm::HostState* state = quelm::HostState::current())
        state->bindings.applyAll();
    return count;
}

} // namespace

float GetFeatureOptValue(char* feature, int* value)
{
    const quelm::HostState* state = quelm::HostState::current();
    if (state == nullptr || feature == nullptr)
        return 0;
    const std::optional<int> number = state->features.number(feature);
    if (number && value != nullptr)
        *value = *number;
    return static_cast<float>(number.value_or(0));
}

int SetFeaturesWithDefaultValue(char* tokenList)
{
    return onFeaturesAndBindings(tokenList, &quelm::Features::setDefaults);
}

int SaveFeaturesWithCurrentValue(char* tokenList) { return onFeatures(tokenList, &quelm::Features::save); }

int RestoreFeaturesWithCurrentValue(char* tokenList)
{
    return onFeaturesAndBindings(tokenList, &quelm::Features::restore);
}
