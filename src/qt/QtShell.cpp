#include "qt/QtShell.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <algorithm>
#include <memory>
#include <utility>

#include "controls/ToolBarControl.h"
#include "qt/FileFilter.h"
#include "qt/FormDialog.h"
#include "qt/FormViews.h"
#include "qt/PictureData.h"
#include "qt/PopupMenu.h"
#include "qt/Text.h"
#include "qt/ToolViews.h"

namespace brisel::qt {

namespace {

QMessageBox::Icon iconOf(platform::MessageIcon icon) {
  switch (icon) {
    case platform::MessageIcon::none:
      break;
    case platform::MessageIcon::information:
      return QMessageBox::Information;
    case platform::MessageIcon::question:
      return QMessageBox::Question;
    case platform::MessageIcon::warning:
      return QMessageBox::Warning;
    case platform::MessageIcon::critical:
      return QMessageBox::Critical;
  }
  return QMessageBox::NoIcon;
}

/// Where a caption belongs on this desktop; closing the box counts as the one that refuses.
QMessageBox::ButtonRole roleOf(const std::string& caption) {
  if (caption == "Cancel") return QMessageBox::RejectRole;
  if (caption == "No" || caption == "Discard" || caption == "Overwrite")
    return QMessageBox::DestructiveRole;
  return QMessageBox::AcceptRole;
}

}  // namespace

QWidget* QtShell::front() const {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  QWidget* active = QApplication::activeWindow();
  if (active && std::find(m_tools.begin(), m_tools.end(), active) != m_tools.end()) return active;
  return m_window ? m_window.data() : QApplication::activeWindow();
}

std::string QtShell::showMessage(const platform::Message& message) {
  QMessageBox box(front());
  box.setWindowTitle(toQt(message.title));
  box.setTextFormat(Qt::PlainText);
  box.setText(toQt(message.text));
  box.setIcon(iconOf(message.icon));
  for (const std::string& caption : message.buttons) {
    QPushButton* button = box.addButton(toQt(caption), roleOf(caption));
    if (!box.defaultButton()) box.setDefaultButton(button);
    if (caption == "Cancel") box.setEscapeButton(button);
  }
  box.exec();
  const QAbstractButton* clicked = box.clickedButton();
  const auto chosen = clicked ? box.buttons().indexOf(clicked) : -1;
  if (chosen < 0) return message.buttons.empty() ? std::string() : message.buttons.back();
  return fromQt(clicked->text().remove('&'));
}

std::optional<std::string> QtShell::askOpenFile(const platform::FileDialog& dialog) {
  const QString name = QFileDialog::getOpenFileName(front(), toQt(dialog.title), toQt(dialog.path),
                                                    toQtFilter(dialog.filter));
  if (name.isEmpty()) return std::nullopt;
  return fromQt(name);
}

std::optional<std::string> QtShell::askSaveFile(const platform::FileDialog& dialog) {
  QFileDialog question(front(), toQt(dialog.title), QFileInfo(toQt(dialog.path)).path(),
                       toQtFilter(dialog.filter));
  question.setAcceptMode(QFileDialog::AcceptSave);
  question.setDefaultSuffix(toQt(dialog.extension).remove(0, 1).toLower());
  // The ending of the kind that is chosen, not of the one that is offered first.
  QObject::connect(&question, &QFileDialog::filterSelected, [&](const QString& filter) {
    const QString ending = filter.section("*.", 1, 1).section(QRegularExpression("[ )]"), 0, 0);
    if (!ending.isEmpty()) question.setDefaultSuffix(ending);
  });
  if (!dialog.path.empty()) question.selectFile(toQt(dialog.path));
  if (question.exec() != QDialog::Accepted) return std::nullopt;
  return fromQt(question.selectedFiles().value(0));
}

void QtShell::showPopup(platform::ToolBarControl& toolBar, std::string_view band) {
  auto* control = dynamic_cast<controls::ToolBarControl*>(&toolBar);
  if (!control || !control->band(band)) return;
  auto* menu = new QMenu(front());
  menu->setAttribute(Qt::WA_DeleteOnClose);
  fillMenu(*menu, *control, band);
  menu->popup(popupPlace());
}

void QtShell::runForm(std::string_view name, platform::Object& form) {
  const platform::Ref<platform::Object> held(&form);
  if (const auto dialog = makeFormDialog(name, form, front())) {
    dialog->run();
  } else {
    form.set("Visible", false);
  }
}

void QtShell::showTool(std::string_view name, platform::Object& tool) {
  if (QWidget* window = makeToolWindow(name, tool)) {
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    m_tools.emplace_back(window);
  }
}

void QtShell::closeTools() {
  for (const QPointer<QWidget>& tool : std::exchange(m_tools, {})) {
    if (tool) tool->close();
  }
}

bool QtShell::showProgress(std::string_view task, double share) {
  constexpr int kSteps = 1000;
  if (!m_progress) {
    m_progress = new QProgressDialog(toQt(task), QObject::tr("Cancel"), 0, kSteps, front());
    m_progress->setWindowTitle("Brisel");
    m_progress->setWindowModality(Qt::ApplicationModal);
    m_progress->setAutoClose(false);
    m_progress->setAutoReset(false);
    m_progress->show();
  }
  m_progress->setValue(static_cast<int>(std::clamp(share, 0.0, 1.0) * kSteps));
  QApplication::processEvents();  // a press on Cancel among them, which may take the dialog away
  return m_progress && !m_progress->wasCanceled();
}

void QtShell::hideProgress() {
  if (!m_progress) return;
  m_progress->hide();
  m_progress->deleteLater();
  m_progress.clear();
}

void QtShell::copy(const std::vector<std::pair<std::string, std::string>>& byKind) {
  QApplication::clipboard()->setMimeData(std::make_unique<PictureData>(byKind).release());
}

}  // namespace brisel::qt
