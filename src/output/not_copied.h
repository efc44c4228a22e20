// The end of "-report": the parts of the template that the output does not copy, one line
// per range, so that a user sees what a run left out. The default output leaves out the
// lines between its sections and the embedded documents, which "-keep" copies; neither
// copies the bytes before "%!PS-Adobe" nor those after the last "%%EOF" line.
#pragma once

class AI_DOCUMENT;
class REPORT;

// copies_whole_text: the output copies the lines between sections and the embedded
// documents ("-keep").
void report_not_copied(const AI_DOCUMENT& doc, bool copies_whole_text, REPORT& report);
