// What placed-art fitting needs of an EPS file: the four numbers of its high-resolution
// bounding-box comment. Nothing else of the file is read.
#pragma once

#include <string>

struct EPS_BBOX {
  double llx = 0;
  double lly = 0;
  double urx = 0;
  double ury = 0;
};

class EPSF_INFO {
 public:
  explicit EPSF_INFO(std::string file_path) : path(std::move(file_path)) {}

  // 0 when the file is a regular file whose first "HiResBoundingBox: " is followed by at
  // least four words on its line; 1 otherwise (missing, not a regular file, no key, too
  // few words). The file is closed again in either case.
  int analyze();
  // Meaningful only after analyze returned 0.
  EPS_BBOX get_HiResBoundingBox() const { return hires_bbox; }

 private:
  int set_HiResBoundingBox(int fd);

  std::string path;
  EPS_BBOX hires_bbox;
};
