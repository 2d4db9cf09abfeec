#pragma once

#include <QApplication>
#include <string>

namespace brisel::qt {

/// The one application object of a program with windows: its name, under which settings are kept,
/// its icon from the folder of the files beside the library, and its style.
class Application {
 public:
  Application(const std::string& version, const std::string& installationFolder);

 private:
  int m_count = 1;
  char m_name[7] = "brisel";
  char* m_arguments[2] = {m_name, nullptr};
  QApplication m_application;
};

}  // namespace brisel::qt
