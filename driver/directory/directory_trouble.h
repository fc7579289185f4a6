// What last went wrong with the directory, and what is missing of its last answer.
#ifndef DRIVER_DIRECTORY_DIRECTORY_TROUBLE_H
#define DRIVER_DIRECTORY_DIRECTORY_TROUBLE_H

#include <string>

namespace quelm {

/// One line that says which directory server, what went wrong and what to do; empty when the last
/// attempt to open, bind or search succeeded, or none was made. The boundary's answers are no more
/// than true and false; commands tell the user this line.
std::string lastDirectoryTrouble();

/// Logs `line` as a warning and keeps it as the last trouble.
void reportDirectoryTrouble(const std::string& line);

/// Forgets the last trouble.
void clearDirectoryTrouble();

/// What the last search gave of all that matches.
enum class SearchExtent {
    whole,
    upToLimit,  ///< the limit of the settings, or the server's own, left others out
    upToFailure ///< it ended early; `lastDirectoryTrouble` says why
};

/// Of the last search in this process, `whole` before the first.
SearchExtent lastSearchExtent();

void noteSearchExtent(SearchExtent extent);

} // namespace quelm

#endif
