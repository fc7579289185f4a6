// Cover pages with values of a test's choice.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_COMPONENT_OUTPUT_FILLED_COVER_PAGE_H
#define TESTS_COMPONENT_OUTPUT_FILLED_COVER_PAGE_H

#include <string>

namespace rendering {

/// What the sixteen slots hold; texts are empty unless a test says otherwise.
struct CoverPageValues {
    std::string recipientName;
    std::string recipientCompany;
    std::string recipientPhone;
    std::string recipientFax;
    std::string recipientEmail;
    std::string senderName;
    std::string senderCompany;
    std::string senderPhone;
    std::string senderFax;
    std::string senderEmail;
    std::string note; ///< the inside of the array, such as " (a note) "
    std::string year = "2026";
    std::string month = "07";
    std::string monthDay = "08";
    std::string hour = "14";
    std::string minute = "09";
};

/// The header, filled the way a job fills it.
std::string header(const CoverPageValues& values);

/// The whole page.
std::string coverPage(const CoverPageValues& values);

/// The header and all of the page program ahead of its main script: details and procedures, no marks on
/// paper.
std::string procedures(const CoverPageValues& values);

} // namespace rendering

#endif
