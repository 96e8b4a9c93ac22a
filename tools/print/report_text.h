#pragma once

#include "configurator/kq_cfg.h"
#include "tools/console/console.h"
#include "tools/console/source_text.h"

/// The files that a translation works on. A file that wasn't given has no name.
struct TSources {
    CSourceText pdt;
    CSourceText par;
    CSourceText dmf;
};

/// Prints for a person all that a translation reported, and which parts of the files weren't read at all.
void PrintReport(TConsole &console, const TSources &sources, const kq_cfg::TReport &report);
/// Prints messages and boxes alone.
void PrintMessages(TConsole &console, const TSources &sources, const std::vector<kq_cfg::TMessage> &messages,
                   const std::vector<kq_cfg::TMessageBox> &boxes);
/// Prints a note for each position from which on the text of a parameter file isn't read.
void PrintUnreadText(TConsole &console, const CSourceText &par);
/// The verdict in a few words: "no errors", "2 errors, 1 warning". A box with the stop icon is an error here.
std::string VerdictText(const kq_cfg::TReport &report);
