// A host of the editor: a diagram on its form, a second view of the same model in a window of its
// own, and what the editor asks of a host. Everything that the host hears of is told on standard
// output. `host --once` goes through it without a person and ends.

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QTimer>
#include <iostream>
#include <map>
#include <string>

#include <brisel/Widgets.h>

using namespace brisel;
using platform::Object;
using platform::Ref;

namespace {

void tell(const std::string& line) { std::cout << line << std::endl; }

/// A component as the manager keeps it, and the object that is ended before it is removed.
class HostedComponent : public Object {
 public:
  [[nodiscard]] Ref<Object> ComObject() { return Ref<Object>(this); }
  void Deinit() { tell("Deinit"); }
  void Destroy() { tell("Destroy"); }

  [[nodiscard]] const platform::MemberTable& memberTable() const override {
    static const auto kTable = platform::MemberTableOf<HostedComponent>()
                                   .method("ComObject", &HostedComponent::ComObject)
                                   .method("Deinit", &HostedComponent::Deinit)
                                   .method("Destroy", &HostedComponent::Destroy)
                                   .build();
    return kTable;
  }
};

/// The session; here it is its own application and component manager, and the window that shows
/// the busy cursor, too.
class Session : public Object {
 public:
  [[nodiscard]] Ref<Object> self() { return Ref<Object>(this); }
  void ShowHelp(std::string_view page) { tell("ShowHelp " + std::string(page)); }
  void add(const std::string& name) { m_components[name] = platform::make<HostedComponent>(); }
  [[nodiscard]] Ref<Object> GetComponent(std::string_view name) {
    tell("GetComponent " + std::string(name));
    const auto found = m_components.find(name);
    return found == m_components.end() ? Ref<Object>() : found->second;
  }
  void RemoveComponent(std::string_view name) {
    tell("RemoveComponent " + std::string(name));
    m_components.erase(std::string(name));
  }
  void HourglassOn() { tell("HourglassOn"); }
  void HourglassOff() { tell("HourglassOff"); }

  [[nodiscard]] const platform::MemberTable& memberTable() const override {
    static const auto kTable = platform::MemberTableOf<Session>()
                                   .method("Application", &Session::self)
                                   .method("ComponentManager", &Session::self)
                                   .method("ShowHelp", &Session::ShowHelp)
                                   .method("GetComponent", &Session::GetComponent)
                                   .method("RemoveComponent", &Session::RemoveComponent)
                                   .method("HourglassOn", &Session::HourglassOn)
                                   .method("HourglassOff", &Session::HourglassOff)
                                   .build();
    return kTable;
  }

 private:
  std::map<std::string, Ref<Object>, std::less<>> m_components;
};

}  // namespace

int main(int count, char** arguments) {
  QApplication application(count, arguments);
  const auto session = platform::make<Session>();

  QMainWindow form;
  auto* diagram = new qt::CLSEditorWidget(&form);
  form.setCentralWidget(diagram);
  form.resize(900, 600);
  session->add("form");
  diagram->ComponentName("form");
  diagram->editor().Session(session.get());
  diagram->editor().ParentWindow(session.get());
  QObject::connect(diagram, &qt::CLSEditorWidget::ClassCreated,
                   [](const QString& key) { tell("ClassCreated " + key.toStdString()); });
  QObject::connect(diagram, &qt::CLSEditorWidget::AssocCreated,
                   [](const QString& key) { tell("AssocCreated " + key.toStdString()); });
  diagram->editor().CreateClass("order", "Order", "", "", "", "public");
  diagram->editor().CreateClass("line", "OrderLine", "", "", "", "public");
  diagram->editor().CreateAggregation("lines", "lines", "", "order", "line", true);
  diagram->editor().Layout("%HIERARCHY%");
  form.show();

  auto& suite = qt::Suite::instance();
  auto window = suite.create<component::DiagramWindow>("BriselCLS.DiagramWindow");
  session->add("window");
  window->Create("window", session.get());
  window->Repository(diagram->editor().Repository().get());
  window->Populate();
  tell("the window shows " + std::to_string(window->getAllNodes()->Count()) + " classes");

  if (application.arguments().contains("--once")) {
    QTimer::singleShot(0, [&] {
      QKeyEvent help(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
      QApplication::sendEvent(diagram->focusProxy(), &help);
      diagram->editor().Clear();
      diagram->editor().Populate();
      window->Conceal();
    });
  }
  window->PopUp(true);  // comes back when the window was closed
  tell("the window was closed");
  window->Destroy();
  if (!application.arguments().contains("--once")) QApplication::exec();
  delete diagram;
  tell("done");
}
