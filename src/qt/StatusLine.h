#pragma once

#include <QCoreApplication>
#include <QString>
#include <string>
#include <vector>

#include "component/Document.h"

class QLabel;
class QStatusBar;

namespace brisel::qt {

/// What the status bar of the application's window tells: what a press would do or what the pointer
/// is over, the tool in hand, how much there is, and the zoom. Document and bar must outlive it.
class StatusLine {
  Q_DECLARE_TR_FUNCTIONS(StatusLine)

 public:
  StatusLine(QStatusBar& bar, component::Document& document);

  /// Counts anew what there is.
  void showCounts();

 private:
  void follow();
  void over(const std::string& key);
  void showFirst();
  void showTool();
  void showZoom();

  component::Document& m_document;
  QLabel* m_first;
  QLabel* m_tool;
  QLabel* m_counts;
  QLabel* m_zoom;
  QString m_hint;
  QString m_over;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
