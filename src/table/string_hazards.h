// Raw table cells go into PostScript strings as they stand; a cell can end its string early
// or leave it open, and the rest of the document then reads as garbage. With "-report",
// every such cell of every table is named, with the carriage returns that CR LF line ends
// leave at the end of a row's last cell.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class REPORT;
class TAB_TEXT;

// What in cell would break the string it is inserted into, or brings a carriage return
// into it, one text per finding.
std::vector<std::string> string_hazards(std::string_view cell);

// Adds to report a line "FILE: row R, column C: FINDING" for every finding in every cell of
// table; file is the table's name as given.
void report_string_hazards(const std::string& file, const TAB_TEXT& table, REPORT& report);
