// Looks at the pictures Ghostscript renders, for the render tests (binary PPM, "P6"):
//   ppm_tool diff A B        "same", or the box "x0 y0 x1 y1" (pixels from the top left) of
//                            the pixels that differ; "size" when the pictures differ in size
//   ppm_tool count R G B A   how many pixels of A have that colour
//   ppm_tool error A B       the mean difference of the channels of A and B, in percent of
//                            the full scale ("size" when the pictures differ in size)
// Status 2 when a picture cannot be read.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace {

struct Picture {
  long width = 0;
  long height = 0;
  std::vector<unsigned char> rgb;
  const unsigned char* at(long x, long y) const {
    return &rgb[static_cast<size_t>(3 * (y * width + x))];
  }
};

// The next number of the header, passing over white space and comments.
bool header_number(std::istream& in, long* value) {
  for (int c; (c = in.peek()) != EOF;) {
    if (c == '#') {
      std::string comment;
      std::getline(in, comment);
    } else if (std::isspace(c)) {
      in.get();
    } else {
      return static_cast<bool>(in >> *value);
    }
  }
  return false;
}

bool read_picture(const char* path, Picture* picture) {
  std::ifstream in(path, std::ios::binary);
  std::string magic(2, '\0');
  long depth = 0;
  if (!in.read(&magic[0], 2) || magic != "P6" || !header_number(in, &picture->width) ||
      !header_number(in, &picture->height) || !header_number(in, &depth) || depth != 255) {
    return false;
  }
  in.get();  // the one white-space byte before the pixels
  picture->rgb.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  return picture->rgb.size() >= static_cast<size_t>(3 * picture->width * picture->height);
}

int diff(const Picture& a, const Picture& b) {
  if (a.width != b.width || a.height != b.height) {
    std::cout << "size\n";
    return 0;
  }
  long x0 = a.width, y0 = a.height, x1 = -1, y1 = -1;
  for (long y = 0; y < a.height; ++y) {
    for (long x = 0; x < a.width; ++x) {
      const unsigned char* p = a.at(x, y);
      const unsigned char* q = b.at(x, y);
      if (p[0] == q[0] && p[1] == q[1] && p[2] == q[2]) continue;
      x0 = std::min(x0, x), y0 = std::min(y0, y), x1 = std::max(x1, x), y1 = std::max(y1, y);
    }
  }
  if (x1 < 0) {
    std::cout << "same\n";
  } else {
    std::cout << x0 << ' ' << y0 << ' ' << x1 << ' ' << y1 << '\n';
  }
  return 0;
}

int mean_error(const Picture& a, const Picture& b) {
  if (a.width != b.width || a.height != b.height) {
    std::cout << "size\n";
    return 0;
  }
  const size_t n = static_cast<size_t>(3 * a.width * a.height);
  double sum = 0;
  for (size_t i = 0; i < n; ++i) sum += std::abs(int{a.rgb[i]} - int{b.rgb[i]});
  std::printf("%.2f\n", n ? 100.0 * sum / (255.0 * static_cast<double>(n)) : 0.0);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string command = argc > 1 ? argv[1] : "";
  Picture a;
  Picture b;
  if (command == "diff" && argc == 4 && read_picture(argv[2], &a) && read_picture(argv[3], &b)) {
    return diff(a, b);
  }
  if (command == "error" && argc == 4 && read_picture(argv[2], &a) && read_picture(argv[3], &b)) {
    return mean_error(a, b);
  }
  if (command == "count" && argc == 6 && read_picture(argv[5], &a)) {
    long count = 0;
    for (long i = 0; i < a.width * a.height; ++i) {
      const unsigned char* p = &a.rgb[static_cast<size_t>(3 * i)];
      count +=
          p[0] == std::atoi(argv[2]) && p[1] == std::atoi(argv[3]) && p[2] == std::atoi(argv[4]);
    }
    std::cout << count << '\n';
    return 0;
  }
  std::cerr << "usage: ppm_tool diff A.ppm B.ppm | ppm_tool count R G B A.ppm | ppm_tool error "
               "A.ppm B.ppm\n";
  return 2;
}
