// Print jobs as drivers send them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DEVICE_PORT_SAMPLE_JOBS_H
#define TESTS_DEVICE_PORT_SAMPLE_JOBS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace quelm::test {

inline const std::string endOfLanguage = "\x1b%-12345X";

/// The lines of a fax to a number, behind `prefix`; in DSC form with the brackets.
inline std::string faxLines(const std::string& prefix, const std::string& number, bool brackets)
{
    auto lines = prefix + "OID_ATT_FAX_COVER_SHEET FALSE;\r\n" + prefix +
                 "OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n" + prefix +
                 "OID_ATT_FAX_CONFIRMATION_SHEET FALSE;\r\n" + prefix + "OID_ATT_FAX_RESOLUTION 0;\r\n" +
                 prefix + "OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_AUTO;\r\n" + prefix +
                 "OID_ATT_FAX_DESTINATION_PHONE \"" + number + "\";\r\n";
    if (brackets)
        lines += "%%QLMbegin\r\n%%QLMend\r\n";
    return lines;
}

/// One page that says so; `padding` bytes of comments make the document larger.
inline std::string page(std::string_view text = "Hello", std::size_t padding = 0)
{
    std::string filled;
    while (filled.size() < padding)
        filled += "% " + std::string(997, 'x') + "\n";
    return filled + "/Helvetica findfont 12 scalefont setfont 72 700 moveto (" + std::string(text) +
           ") show showpage\n";
}

/// A fax in DSC form, which ends with its connection.
inline std::string dscJob(const std::string& number = "5550104477", std::size_t padding = 0)
{
    return "%!PS-Adobe-3.0\n%%Title: (letter.ps)\n" + faxLines("%%", number, true) + "%%EndComments\n" +
           page("Hello", padding) + "%%Trailer\n%%EOF\n";
}

/// A fax in PJL form, which says where it ends.
inline std::string pjlJob(const std::string& number = "5550104477")
{
    return endOfLanguage + "@PJL JOB NAME=\"letter.ps\"\r\n" + faxLines("@PJL COMMENT ", number, false) +
           "@PJL ENTER LANGUAGE=POSTSCRIPT\r\n%!PS-Adobe-3.0\n%%EndComments\n" + page() +
           "%%Trailer\n%%EOF\n" + endOfLanguage + "@PJL EOJ NAME=\"letter.ps\"\r\n" + endOfLanguage;
}

} // namespace quelm::test

#endif
