// Runs a fuzz target's entry point over files, so the corpora replay as ordinary tests in
// every build. Arguments are files or folders (every regular file inside, not recursing).
#include <dirent.h>
#include <sys/stat.h>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

static void collect(const std::string& path, std::vector<std::string>& files) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) return;
  if (S_ISREG(status.st_mode)) {
    files.push_back(path);
    return;
  }
  if (!S_ISDIR(status.st_mode)) return;
  DIR* dir = opendir(path.c_str());
  if (!dir) return;
  while (dirent* entry = readdir(dir)) {
    std::string name = entry->d_name;
    if (name[0] == '.') continue;
    std::string full = path + "/" + name;
    if (stat(full.c_str(), &status) == 0 && S_ISREG(status.st_mode)) files.push_back(full);
  }
  closedir(dir);
}

int main(int argc, char** argv) {
  std::vector<std::string> files;
  for (int i = 1; i < argc; ++i) collect(argv[i], files);
  for (const std::string& file : files) {
    std::ifstream in(file, std::ios::binary);
    std::stringstream bytes;
    bytes << in.rdbuf();
    const std::string data = bytes.str();
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(data.data()), data.size());
  }
  std::printf("%zu inputs replayed\n", files.size());
  return files.empty() ? 1 : 0;
}
