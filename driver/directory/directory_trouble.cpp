// Keeps and logs the directory's last trouble.
#include "driver/directory/directory_trouble.h"

#include "base/log.h"

namespace quelm {

namespace {

std::string& trouble()
{
    static std::string line;
    return line;
}

SearchExtent& extentOfSearch()
{
    static SearchExtent extent = SearchExtent::whole;
    return extent;
}

} // namespace

std::string lastDirectoryTrouble() { return trouble(); }

void reportDirectoryTrouble(const std::string& line)
{
    trouble() = oneLine(line);
    log(Severity::warning, line);
}

void clearDirectoryTrouble() { trouble().clear(); }

SearchExtent lastSearchExtent() { return extentOfSearch(); }

void noteSearchExtent(SearchExtent extent) { extentOfSearch() = extent; }

} // namespace quelm
