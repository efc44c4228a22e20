#include "placed/eps_file_source.h"

#include "placed/eps_path.h"

NEW_ART EPS_FILE_SOURCE::find(std::string_view cell, bool string_body) {
  NEW_ART art;
  art.path = local_eps_path(cell, home, string_body);
  if (!art.path) return art;
  EPSF_INFO info(*art.path);
  if (info.analyze() == 0) art.box = info.get_HiResBoundingBox();
  return art;
}

std::optional<std::string_view> EPS_FILE_SOURCE::postscript(const std::string& path) {
  return files->postscript(path);
}
