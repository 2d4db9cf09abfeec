#include "qt/Application.h"

#include "qt/Icon.h"
#include "qt/Text.h"

namespace brisel::qt {

Application::Application(const std::string& version, const std::string& installationFolder)
    : m_application(m_count, m_arguments) {
  QApplication::setOrganizationName("Brisel");
  QApplication::setApplicationName("brisel");
  QApplication::setApplicationDisplayName("Brisel");
  QApplication::setDesktopFileName("org.brisel.Brisel");  // data/desktop
  QApplication::setApplicationVersion(toQt(version));
  QApplication::setWindowIcon(loadIcon(installationFolder + "/brisel.ico"));
}

}  // namespace brisel::qt
