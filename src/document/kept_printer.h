// The output of "-keep": the template's bytes from "%!PS-Adobe" through the line of its last
// "%%EOF", copied, except the bytes of the objects that a table argument changed, which are
// rewritten in place. The template's own "%%EOF" line ends the output; nothing is added.
#pragma once

class AI_DOCUMENT;
class Output;

// Everything the rewritten objects need (the new EPS files they embed, for one) is read
// before the first byte is written, so a failure leaves the output empty.
void print_kept(const AI_DOCUMENT& doc, Output& out);
