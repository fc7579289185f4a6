// What every test of the component begins with: the pleasant host and a component as just loaded.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_COMPONENT_TEST_H
#define TESTS_SUPPORT_COMPONENT_TEST_H

#include "host/fax_session.h"
#include "model/fax_job.h"
#include "model/recipient.h"
#include "tests/support/fake_host.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using fake::fakeHost;
using fake::lines;

/// Puts the component's module state back to what it is when the library is loaded, and frees what the
/// component keeps until the process ends.
void unloadComponent();

/// A recipient that no list owns.
std::unique_ptr<Tarvik40FaxRecipient> makeRecipient(const std::string& name, const std::string& faxNumber);

/// The component is loaded, and not started.
class ComponentTest : public testing::Test {
protected:
    ComponentTest();
    ~ComponentTest() override;

    /// Adds a single recipient to the job, as the dialogs do, without touching a widget.
    Tarvik40FaxRecipient* addRecipient(const std::string& name, const std::string& faxNumber);
    /// The same to the picks of the phonebook dialog.
    Tarvik40FaxRecipient* addPick(const std::string& name, const std::string& faxNumber);

    /// The names of the job's recipients, in order.
    std::vector<std::string> jobNames();

    Tarvik40Fax& job() { return *pFaxSession; }

    fake::Host& host = fakeHost();
};

/// The component is started, and the journal empty.
class StartedComponentTest : public ComponentTest {
protected:
    StartedComponentTest();
};

/// A field's text, "(none)" when the recipient answers null.
std::string field(Tarvik40FaxRecipient* recipient, const char* key);

/// The number that is dialled for a recipient.
std::string dialledNumber(Tarvik40FaxRecipient* recipient);

/// A text of `size` bytes that differs from place to place.
std::string longText(std::size_t size);

#endif
