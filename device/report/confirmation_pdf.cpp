// Writes a confirmation sheet as PDF.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/atomic_file.h"
#include "base/translation.h"
#include "device/report/confirmation_sheet.h"
#include "device/report/report_contents.h"
#include "device/report/sheet_canvas.h"

#include <algorithm>
#include <array>
#include <vector>

namespace quelm::device {
namespace {

constexpr double margin = 54;
constexpr double textWidth = SheetCanvas::pageWidth - 2 * margin;
constexpr double bottom = SheetCanvas::pageHeight - margin - 18; // of the table, above the footer
constexpr double padding = 4.5;                                  // above and below a row
constexpr int pictureWidth = 330;                                // pixels
constexpr double pictureShownWidth = 110;

constexpr Ink black{0.10, 0.11, 0.13};
constexpr Ink grey{0.38, 0.41, 0.45};
constexpr Ink line{0.80, 0.82, 0.85};
constexpr Ink stripe{0.955, 0.965, 0.975};
constexpr Ink accent{0.09, 0.30, 0.47};
constexpr Ink good{0.10, 0.45, 0.25};
constexpr Ink bad{0.70, 0.15, 0.13};

constexpr TextStyle headingStyle{.size = 10.5, .bold = true, .ink = accent};
constexpr TextStyle titleStyle{.size = 19, .bold = true, .mostLines = 3, .ink = black};
constexpr TextStyle labelStyle{.size = 9, .ink = grey};
constexpr TextStyle valueStyle{.size = 9, .mostLines = 2, .ink = black};
constexpr TextStyle detailStyle{.size = 7.5, .mostLines = 2, .ink = grey};
constexpr TextStyle noteStyle{.size = 8.5, .mostLines = 8, .ink = grey};
constexpr TextStyle footerStyle{.size = 8, .ink = grey};

/// A column of the table: the cells' and, last, the result's.
struct Column {
    double x;
    double width;
    PangoAlignment alignment;
};

constexpr std::array<Column, reportColumns + 1> table = {{
    {4, 22, PANGO_ALIGN_RIGHT},
    {36, 116, PANGO_ALIGN_LEFT},
    {160, 86, PANGO_ALIGN_LEFT},
    {252, 42, PANGO_ALIGN_RIGHT},
    {302, 44, PANGO_ALIGN_RIGHT},
    {350, 34, PANGO_ALIGN_RIGHT},
    {398, 102, PANGO_ALIGN_LEFT},
}};
/// Where the details of a row stand: below its cells, beside the result.
constexpr double detailsX = 36;
constexpr double detailsWidth = 348;

TextStyle cellStyle(const Column& column)
{
    // A number of as many keys as a call has, with what parts groups of them, stands there whole.
    return {.size = 8.5, .alignment = column.alignment, .mostLines = 9, .ink = black};
}

TextStyle resultStyle(bool sent)
{
    return {.size = 8.5, .bold = true, .mostLines = 5, .ink = sent ? good : bad};
}

/// Lays the sheet out, page by page.
class Sheet {
public:
    Sheet(const ReportContents& contents, std::optional<PagePicture> picture)
        : contents_(contents), picture_(std::move(picture)), canvas_(contents.heading + ": " + contents.title)
    {
    }

    std::string draw()
    {
        double y = drawHead();
        const auto firstRows = rowsOfPages(y);
        const std::size_t pages = firstRows.size();
        for (std::size_t page = 0; page < pages; ++page) {
            if (page > 0)
                y = drawShortHead();
            const std::size_t end = page + 1 < pages ? firstRows[page + 1] : contents_.rows.size();
            if (firstRows[page] < end)
                y = drawTableHead(y);
            for (std::size_t row = firstRows[page]; row < end; ++row)
                y = drawRow(contents_.rows[row], y, row % 2 == 1);
            if (page + 1 == pages)
                drawNotes(y);
            drawFooter(page + 1, pages);
            canvas_.endPage();
        }
        return canvas_.finish();
    }

private:
    /// The first row of each page, the first of which has room from `y` on. The notes behind the last row
    /// may take a page of their own, which has no rows.
    std::vector<std::size_t> rowsOfPages(double y)
    {
        std::vector<std::size_t> first{0};
        const double otherPages = margin + 20;
        y += tableHeadHeight;
        for (std::size_t row = 0; row < contents_.rows.size(); ++row) {
            const double height = rowHeight(contents_.rows[row]);
            if (y + height > bottom) {
                first.push_back(row);
                y = otherPages + tableHeadHeight;
            }
            y += height;
        }
        if (!contents_.notes.empty() && y + notesHeight() > bottom)
            first.push_back(contents_.rows.size());
        return first;
    }

    double drawHead()
    {
        canvas_.fill({margin, margin - 14, textWidth, 2.5}, accent);
        double y = margin;
        canvas_.drawText(contents_.heading, margin, y, textWidth, headingStyle);
        const double width = picture_ ? textWidth - pictureShownWidth - 24 : textWidth;
        y += 22;
        y += canvas_.drawText(contents_.title, margin, y, width, titleStyle) + 8;

        const TextStyle outcome{.size = 11, .bold = true, .ink = contents_.complete ? good : bad};
        const double outcomeHeight = canvas_.heightOf(contents_.outcome, width - 16, outcome);
        canvas_.fill({margin, y + outcomeHeight / 2 - 4, 8, 8}, outcome.ink, 4);
        canvas_.drawText(contents_.outcome, margin + 16, y, width - 16, outcome);
        y += outcomeHeight + 12;

        for (const auto& fact : contents_.facts) {
            canvas_.drawText(fact.label, margin, y, 104, labelStyle);
            y += canvas_.drawText(fact.value, margin + 110, y, width - 110, valueStyle) + 3;
        }
        return std::max(y, drawPicture()) + 18;
    }

    /// Returns where it ends.
    double drawPicture()
    {
        if (!picture_)
            return margin;
        const double height = std::min(180.0, pictureShownWidth * picture_->height / picture_->width);
        const double width = height * picture_->width / picture_->height;
        const Box box{margin + textWidth - width, margin + 24, width, height};
        canvas_.fill({box.x - 0.7, box.y - 0.7, box.width + 1.4, box.height + 1.4}, line);
        canvas_.drawPicture(*picture_, box);
        TextStyle style = footerStyle;
        style.alignment = PANGO_ALIGN_CENTER;
        const double x = margin + textWidth - pictureShownWidth;
        return box.y + height + 4 +
               canvas_.drawText(localized("first page"), x, box.y + height + 4, pictureShownWidth, style);
    }

    /// At the top of the other pages. Returns where the table begins.
    double drawShortHead()
    {
        canvas_.fill({margin, margin - 14, textWidth, 2.5}, accent);
        canvas_.drawText(contents_.heading + ": " + contents_.title, margin, margin, textWidth, labelStyle);
        return margin + 20;
    }

    double drawTableHead(double y)
    {
        canvas_.fill({margin, y, textWidth, tableHeadHeight - 2}, accent);
        for (std::size_t i = 0; i < table.size(); ++i) {
            const TextStyle style{
                .size = 8.5, .bold = true, .alignment = table[i].alignment, .ink = {1, 1, 1}};
            canvas_.drawText(i < reportColumns ? contents_.heads[i] : localized("Result"),
                             margin + table[i].x, y + 4, table[i].width, style);
        }
        return y + tableHeadHeight;
    }

    double cellsHeight(const ReportRow& row)
    {
        double height = 0;
        for (std::size_t i = 0; i < reportColumns; ++i)
            height = std::max(height, canvas_.heightOf(row.cells[i], table[i].width, cellStyle(table[i])));
        return height;
    }

    double rowHeight(const ReportRow& row)
    {
        double height = cellsHeight(row);
        for (const auto& detail : row.details)
            height += canvas_.heightOf(detail, detailsWidth, detailStyle) + 1;
        height = std::max(height, canvas_.heightOf(row.result, table.back().width, resultStyle(row.sent)));
        return height + 2 * padding;
    }

    double drawRow(const ReportRow& row, double y, bool striped)
    {
        const double height = rowHeight(row);
        if (striped)
            canvas_.fill({margin, y, textWidth, height}, stripe);
        for (std::size_t i = 0; i < reportColumns; ++i)
            canvas_.drawText(row.cells[i], margin + table[i].x, y + padding, table[i].width,
                             cellStyle(table[i]));
        canvas_.drawText(row.result, margin + table.back().x, y + padding, table.back().width,
                         resultStyle(row.sent));
        double below = y + padding + cellsHeight(row);
        for (const auto& detail : row.details)
            below += canvas_.drawText(detail, margin + detailsX, below + 1, detailsWidth, detailStyle) + 1;
        canvas_.fill({margin, y + height - 0.5, textWidth, 0.5}, line);
        return y + height;
    }

    double notesHeight()
    {
        double height = 12;
        for (const auto& note : contents_.notes)
            height += canvas_.heightOf(note, textWidth, noteStyle) + 4;
        return height;
    }

    void drawNotes(double y)
    {
        y += 12;
        for (const auto& note : contents_.notes)
            y += canvas_.drawText(note, margin, y, textWidth, noteStyle) + 4;
    }

    void drawFooter(std::size_t page, std::size_t pages)
    {
        const double y = SheetCanvas::pageHeight - margin + 2;
        canvas_.fill({margin, y - 6, textWidth, 0.5}, line);
        TextStyle style = footerStyle;
        style.alignment = PANGO_ALIGN_RIGHT;
        canvas_.drawText(localized("page %d of %d", page, pages), margin + textWidth - 120, y, 120, style);
        const auto& job = contents_.facts.front();
        canvas_.drawText(job.label + " " + job.value, margin, y, 200, footerStyle);
    }

    static constexpr double tableHeadHeight = 20;

    const ReportContents& contents_;
    std::optional<PagePicture> picture_;
    SheetCanvas canvas_;
};

} // namespace

void writeConfirmationPdf(const std::string& path, const JobRecord& job, const std::vector<CallRecord>& calls,
                          const std::string& pages)
{
    const ReportContents contents = reportContents(job, calls);
    std::optional<PagePicture> picture;
    if (!pages.empty())
        picture = pictureOf(pages, 1, pictureWidth);
    const std::string pdf = Sheet(contents, std::move(picture)).draw();
    AtomicFile file(path);
    file.restrictToOwner();
    file.write(pdf);
    file.commit();
}

} // namespace quelm::device
