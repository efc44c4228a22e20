#include "output/ghostscript.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "output/page_box.h"
#include "support/atomic_file.h"
#include "support/error.h"
#include "support/settings.h"

extern char** environ;

namespace {

// Written for ormel from the PostScript Language Reference's advice on including EPS files.
// A document's block is read through a SubFileDecode filter that ends after its length, run
// under stopped, and the stacks are put back before restore; an error is told (and
// Ghostscript quits) before restore, which would forget it. The page is shown by a second
// command after the block, so a block cut short (this process ended) shows no page.
constexpr char kPrologue[] = R"(
/ormel-gs 16 dict def
ormel-gs begin
  /install currentpagedevice /Install get def
  /text 1024 string def
  /say { ormel-gs /text get cvs print } bind def
  /failed {
    ormel-gs begin
    (\normel-gs error ) print number say ( ) print
    $error /newerror get {
      (/) print $error /errorname get say ( in ) print $error /command get say
    } { (stop) print } ifelse
    (\n) print flush quit
  } bind def
end
/ormel-page-size {
  ormel-gs begin
    /lly exch def /llx exch def 2 array astore /size exch def
    << /PageSize size /Install [/install load /exec load llx neg lly neg /translate load] cvx >>
  end
  setpagedevice
} bind def
/ormel-document {
  ormel-gs begin
    /bytes exch def /number exch def
    /document currentfile bytes () /SubFileDecode filter def
  end
  ormel-gs /state save put
  ormel-gs /operands count 2 sub put
  ormel-gs /dictionaries countdictstack put
  userdict begin
  /showpage { } def
  ormel-gs /document get cvx stopped { ormel-gs /failed get exec } if
  count ormel-gs /operands get sub dup 0 gt { { pop } repeat } { pop } ifelse
  countdictstack ormel-gs /dictionaries get sub dup 0 gt { { end } repeat } { pop } ifelse
  ormel-gs /document get flushfile
  ormel-gs /state get restore
} bind def
/ormel-page {
  systemdict /showpage get exec
  (\normel-gs page ) print ormel-gs /say get exec (\n) print flush
} bind def
)";

// Every font a PDF uses goes into it, the standard ones too: a print shop's RIP must not
// substitute its own.
constexpr char kPdfPrologue[] = "<< /NeverEmbed [ ] >> setdistillerparams\n";

constexpr char kPageMark[] = "\normel-gs page ";
constexpr char kErrorMark[] = "\normel-gs error ";
// What of Ghostscript's words a failure quotes: its last ones.
constexpr size_t kQuoted = 2000;

std::vector<std::string> device_arguments(const SETTINGS& settings) {
  if (settings.form == OUTPUT_FORM::pdf) return {"-sDEVICE=pdfwrite", "-dAutoRotatePages=/None"};
  return {"-sDEVICE=png16m", "-r" + std::to_string(settings.dpi), "-dTextAlphaBits=4",
          "-dGraphicsAlphaBits=4"};
}

std::string number_text(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.10g", value);
  return text;
}

std::string tail_of(const std::string& text) {
  const size_t start = text.size() > kQuoted ? text.size() - kQuoted : 0;
  const size_t first = text.find_first_not_of("\n", start);
  std::string quoted = first == std::string::npos ? "" : text.substr(first);
  while (!quoted.empty() && quoted.back() == '\n') quoted.pop_back();
  return quoted;
}

}  // namespace

std::string gs_output_name(const std::string& path) {
  // "./" keeps a name that begins with "|" or "%" from naming a pipe or a device.
  std::string name = path.empty() || path[0] == '/' ? "" : "./";
  for (char c : path) {
    name += c;
    if (c == '%') name += '%';
  }
  return name;
}

GHOSTSCRIPT::GHOSTSCRIPT(const SETTINGS& settings, const std::string& output, const char* program) {
  std::vector<std::string> args = {program, "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE"};
  for (const std::string& arg : device_arguments(settings)) args.push_back(arg);
  // The PDF device of Ghostscript 10.0, starting a file per page, fails the 17th page of
  // the example's labels ("/undefined in show") while it compresses fonts.
  if (settings.form == OUTPUT_FORM::pdf && output.find("%d") != std::string::npos) {
    args.push_back("-dCompressFonts=false");
  }
  args.push_back("-sOutputFile=" + output);
  args.push_back("-_");
  start(args);
  send(kPrologue);
  if (settings.form == OUTPUT_FORM::pdf) send(kPdfPrologue);
}

GHOSTSCRIPT::~GHOSTSCRIPT() {
  if (input >= 0) ::close(input);
  if (messages >= 0) ::close(messages);
  if (pid > 0) {
    end_child_on_signal(0);
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
  }
}

// Its input is a socket rather than a pipe so that writing to a Ghostscript that has ended
// is an error to handle (MSG_NOSIGNAL), not a signal that ends this process.
void GHOSTSCRIPT::start(const std::vector<std::string>& args) {
  int feed[2];
  int said[2];
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, feed) != 0 ||
      ::pipe2(said, O_CLOEXEC) != 0) {
    fail("cannot start Ghostscript: %s\n", std::strerror(errno));
  }
  input = feed[0];
  messages = said[0];
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, feed[1], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, said[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, said[1], STDERR_FILENO);
  std::vector<char*> argv;
  for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
  argv.push_back(nullptr);
  const int error = ::posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  ::close(feed[1]);
  ::close(said[1]);
  if (error == ENOENT) {
    pid = -1;
    fail("Ghostscript (%s) is not installed: install the Debian package ghostscript\n", argv[0]);
  }
  if (error != 0) {
    pid = -1;
    fail("cannot start Ghostscript (%s): %s\n", argv[0], std::strerror(error));
  }
  end_child_on_signal(pid);
  ::fcntl(input, F_SETFL, O_NONBLOCK);
}

void GHOSTSCRIPT::render(std::string_view document) {
  const std::optional<PAGE_BOX> box = page_box(document);
  if (!box) fail("no %%%%BoundingBox gives the size of its page\n");
  ++pages;
  // Setting the page device costs more than a label's page: only a new size sets it.
  const std::string size = number_text(box->urx - box->llx) + " " +
                           number_text(box->ury - box->lly) + " " + number_text(box->llx) + " " +
                           number_text(box->lly) + " ormel-page-size\n";
  if (size != page_size) send(size);
  page_size = size;
  send(std::to_string(pages) + " " + std::to_string(document.size()) + " ormel-document\n");
  send(document);
  send("\n" + std::to_string(pages) + " ormel-page\n");
  await_page();
}

void GHOSTSCRIPT::finish() {
  ::shutdown(input, SHUT_WR);
  while (hear()) {
  }
  const int status = reap();
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    fail("Ghostscript ended with status %d: %s\n", WIFEXITED(status) ? WEXITSTATUS(status) : -1,
         tail_of(heard).c_str());
  }
}

// Writes bytes as Ghostscript takes them, listening to it meanwhile: it may say more than
// its output pipe holds before it reads on.
void GHOSTSCRIPT::send(std::string_view bytes) {
  while (!bytes.empty()) {
    pollfd fds[2] = {{input, POLLOUT, 0}, {messages, POLLIN, 0}};
    if (::poll(fds, 2, -1) < 0) {
      if (errno == EINTR) continue;
      fail("cannot write to Ghostscript: %s\n", std::strerror(errno));
    }
    if ((fds[1].revents & (POLLIN | POLLHUP)) && !hear()) ended();
    if (!(fds[0].revents & (POLLOUT | POLLERR | POLLHUP))) continue;
    const ssize_t sent = ::send(input, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent >= 0) {
      bytes.remove_prefix(static_cast<size_t>(sent));
    } else if (errno == EPIPE || errno == ECONNRESET) {
      ended();
    } else if (errno != EAGAIN && errno != EINTR) {
      fail("cannot write to Ghostscript: %s\n", std::strerror(errno));
    }
  }
}

void GHOSTSCRIPT::await_page() {
  const std::string mark = kPageMark + std::to_string(pages) + "\n";
  for (;;) {
    const size_t at = heard.find(mark);
    if (at != std::string::npos) {
      heard.erase(0, at + mark.size());
      return;
    }
    if (heard.find(kErrorMark) != std::string::npos) ended();
    pollfd fds[1] = {{messages, POLLIN, 0}};
    if (::poll(fds, 1, -1) < 0 && errno != EINTR) {
      fail("cannot read from Ghostscript: %s\n", std::strerror(errno));
    }
    if (!hear()) ended();
  }
}

// Waits for Ghostscript to end; its exit status.
int GHOSTSCRIPT::reap() {
  end_child_on_signal(0);
  int status = 0;
  while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  pid = -1;
  return status;
}

// Reads what Ghostscript has said; false at the end of its words (it has ended).
bool GHOSTSCRIPT::hear() {
  char buffer[65536];
  for (;;) {
    const ssize_t got = ::read(messages, buffer, sizeof buffer);
    if (got > 0) {
      heard.append(buffer, static_cast<size_t>(got));
      return true;
    }
    if (got == 0) return false;
    if (errno != EINTR) fail("cannot read from Ghostscript: %s\n", std::strerror(errno));
  }
}

// The page was not written: Ghostscript's own words, all of them once it has ended, say why.
void GHOSTSCRIPT::ended() {
  while (hear()) {
  }
  const int status = reap();
  const size_t at = heard.find(kErrorMark);
  if (at != std::string::npos) {
    const size_t from = heard.find(' ', at + sizeof kErrorMark - 1) + 1;
    const size_t end = heard.find('\n', from);
    fail("Ghostscript cannot render it: %s\n", heard.substr(from, end - from).c_str());
  }
  const std::string said = tail_of(heard);
  fail("Ghostscript ended (status %d) before writing its page%s%s\n",
       WIFEXITED(status) ? WEXITSTATUS(status) : -1, said.empty() ? "" : ": ", said.c_str());
}
