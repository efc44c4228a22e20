// How a run judges what its documents were left without (REPORT::problems): a strict run
// fails before it writes anything, listing the problems; a batch that wrote its documents
// says in one line what it left undone.
#pragma once

#include <string>
#include <vector>

#include "support/report.h"

// Fails the run (Error) when there is any problem: "-strict" and the first 20 problems,
// each with its document when it has one, then how many more.
void refuse_problems(const std::vector<PROBLEM>& problems);

// The summary line of a batch of written documents that left something undone:
// "ormel: 5000 documents written; 3 placeholders without a cell (documents 17, 42, 43); see
// -report"; empty when there is no problem.
std::string problems_summary(long long written, const std::vector<PROBLEM>& problems);
