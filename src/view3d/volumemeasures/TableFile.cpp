#include "view3d/volumemeasures/TableFile.h"

#include "base/WholeFile.h"

namespace tables {

std::string WithExtension(const std::string& name) {
  return name.find(".xls") != std::string::npos ? name : name + ".xls";
}

bool Append(const std::string& name, const std::string& text) {
  return WholeFile(name).Append(text);
}

bool Replace(const std::string& name, const std::string& text) {
  return WholeFile(name).Replace(text);
}

}  // namespace tables
