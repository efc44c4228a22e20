// One Ghostscript process for a whole run, fed document after document through its standard
// input: each document becomes one page of the device's output, and the next is sent once
// Ghostscript has said the page is written. Ghostscript runs as a program of its own
// ("gs"), never linked in, so its licence stays its own.
//
// Each document runs as an included EPS file does: inside save and restore, with userdict
// on a dictionary stack as it found it and the operand stack as it found it, and showpage
// made harmless; the wrapper shows the page afterwards. So nothing one document defines
// reaches the next. The page is the document's box (page_box) and its origin the box's
// lower-left corner. The document reaches Ghostscript as a counted block, so no byte of it
// can end it early or read past it.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

struct SETTINGS;

class GHOSTSCRIPT {
 public:
  // Starts Ghostscript writing the pages to output, a Ghostscript output file name ("%d" is
  // the page number from 1, "%%" a percent sign): PDF when the settings' output is a PDF,
  // PNG at the settings' resolution otherwise. Fails, naming the Debian package, when the
  // program ("gs" on the PATH; tests give others) cannot be found.
  GHOSTSCRIPT(const SETTINGS& settings, const std::string& output, const char* program = "gs");
  // Ends Ghostscript without waiting for what it was writing.
  ~GHOSTSCRIPT();
  GHOSTSCRIPT(const GHOSTSCRIPT&) = delete;
  GHOSTSCRIPT& operator=(const GHOSTSCRIPT&) = delete;

  // Renders document as the next page and returns once Ghostscript has written it. A
  // document without a box, one that stops with an error ("Ghostscript cannot render it:
  // /undefined in foo") or a Ghostscript that ends on its own fails the run.
  void render(std::string_view document);
  // Ends Ghostscript's input and waits for it to finish its output; fails unless it ends
  // with status 0.
  void finish();

 private:
  void start(const std::vector<std::string>& args);
  void send(std::string_view bytes);
  void await_page();
  bool hear();
  int reap();
  [[noreturn]] void ended();

  pid_t pid = -1;
  int input = -1;     // Ghostscript's standard input
  int messages = -1;  // its standard output and error, together
  long long pages = 0;
  std::string page_size;  // the command that set the last page's size
  std::string heard;      // what Ghostscript said since the last page
};

// path as a Ghostscript output file name: each "%" doubled, and a relative path begun with
// "./".
std::string gs_output_name(const std::string& path);
