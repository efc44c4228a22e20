// Which encoding a template's text is in, as far as the template tells: Illustrator
// re-encodes its text fonts with one vector, written in the setup section, and that vector
// is the Mac one or the Windows one.
#pragma once

class AI_DOCUMENT;

// "WINDOWS-1252" when the setup section holds the Windows vector (its codes from 128 or 130
// on, after "39/quotesingle 96/grave", begin "/Euro" or "/quotesinglbase"); "MACINTOSH"
// for the Mac vector ("128/Adieresis"), for any other vector and when there is none. why,
// when given, receives the reason in words, for the report.
const char* template_text_encoding(const AI_DOCUMENT& doc, const char** why = nullptr);
