// Translation of the component's messages through the host.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "common/messages.h"

#include "common/module_state.h"

#include <algorithm>
#include <iterator>

namespace {

bool translateIntoBuffer(const char* text)
{
    std::fill(std::begin(messageBuffer), std::end(messageBuffer), '\0');
    return host::translate(text, messageBuffer);
}

} // namespace

const char* translated(const char* text) { return translateIntoBuffer(text) ? messageBuffer : text; }

std::string questionText(const char* text) { return host::plainText(translated(text)); }

std::string duplicateQuestionText(const char* text)
{
    translateIntoBuffer(text);
    return host::plainText(messageBuffer);
}

std::string labelledValue(const std::string& label, const char* value)
{
    return label + "   " + (value != nullptr ? value : "");
}
