#include "component/Document.h"

#include <algorithm>
#include <bit>
#include <filesystem>
#include <functional>
#include <utility>

#include "component/ModelFile.h"
#include "platform/MemberTableOf.h"
#include "platform/Shell.h"
#include "repository/NewModel.h"
#include "repository/ViewDefaults.h"

namespace brisel::component {

using platform::Error;
using platform::MetaRepository;
using platform::Node;
using platform::Object;
using platform::Ref;
namespace types = platform::types;

namespace {

/// Percent: below it the rows of a class are hard to read.
constexpr double kLeastReadableZoom = 60;
constexpr double kMargin = 300;  // twips

constexpr const char* kExporter = "BriselExporter.DIMExport";

const platform::FileDialog kSaveDialog = {"Save diagram", "DIM Format (*.dim)|*.dim", ".dim", ""};

std::int64_t countOf(const MetaRepository& model, std::string_view type) {
  return model.MetaNodes(type)->extension()->Count();
}

std::string counted(std::int64_t count, std::string_view one) {
  return std::to_string(count) + " " + std::string(one) + (count == 1 ? "" : "s");
}

std::string fileName(const std::string& path) { return path.substr(path.find_last_of('/') + 1); }

/// The name at the first end of the kind that a relationship has, or a question mark.
std::string endName(const Node& relationship, std::string_view type, std::string_view word) {
  const auto links = relationship.outgoing(std::string(type) + "." + std::string(word) + ".Class");
  if (links->Count() == 0) return "?";
  return platform::as<platform::Link>(links->Item(1))->Target()->name();
}

struct RelationshipWords {
  std::string_view type, from, to;
};
constexpr RelationshipWords kRelationships[] = {
    {types::kAssociation, "Source", "Target"},
    {types::kAggregation, "Source", "Target"},
    {types::kGeneralization, "Sub", "Super"},
};

class Fingerprint {
 public:
  void add(double value) {
    m_hash = (m_hash ^ std::bit_cast<std::uint64_t>(value)) * 0x9E3779B97F4A7C15U;
    m_hash ^= m_hash >> 29U;
  }
  void add(const std::string& text) {
    m_hash = (m_hash ^ std::hash<std::string>()(text)) * 0x9E3779B97F4A7C15U;
  }
  [[nodiscard]] std::uint64_t value() const { return m_hash; }

 private:
  std::uint64_t m_hash = 0;
};

}  // namespace

/// Exports as the suite's exporter does, and tells the document how it went.
class Document::WatchedExporter : public Object {
 public:
  WatchedExporter(Ref<Object> exporter, Document& document)
      : m_exporter(std::move(exporter)), m_document(&document) {}

  void leave() { m_document = nullptr; }

  platform::Value Export(std::string_view file, std::string_view kind, Object& repository) {
    try {
      std::string path(file);
      if (m_document && !m_document->agreeOnTarget(path)) return {};
      auto result = m_exporter->call("Export", {path, kind, Ref<Object>(&repository)});
      if (m_document) m_document->succeeded(path);
      return result;
    } catch (const std::exception& error) {
      if (m_document) m_document->failed(error.what());
      throw;
    }
  }

  [[nodiscard]] const platform::MemberTable& memberTable() const override {
    static const platform::MemberTable kTable = platform::MemberTableOf<WatchedExporter>()
                                                    .method("Export", &WatchedExporter::Export)
                                                    .build();
    return kTable;
  }

 private:
  Ref<Object> m_exporter;
  Document* m_document;
};

Document::Document(platform::ComponentRegistry& registry) : m_registry(registry) {
  m_exporter = platform::make<WatchedExporter>(registry.create(kExporter), *this);
  registry.add(kExporter, [exporter = m_exporter](auto&) { return exporter; });
  m_editor = registry.create<editor::CLSEditor>("BriselCLS.CLSEditor");
  m_canvas = platform::as<canvas::DiagramControl>(m_editor->diagram());
  connect();
  create();
}

Document::~Document() {
  m_exporter->leave();
  m_connections.clear();
  m_editor->terminate();
}

void Document::connect() {
  const auto changed = [this](const std::string&) { Changed(); };
  m_connections.push_back(m_canvas->NodeMoved.connect(changed));
  m_connections.push_back(m_canvas->NodeResized.connect(changed));
  m_connections.push_back(m_canvas->scene().Damaged.connect([this](const auto&) { Changed(); }));
}

void Document::create() {
  const auto model = repository::newModel(m_registry, "Application");
  repository::makeLayoutNode(*model);
  show(*model->GetRepository(), {});
}

void Document::open(const std::vector<std::string>& files) {
  const FileStamp before(files.size() == 1 ? files.front() : std::string());
  ModelFile model = readModel(m_registry, files);
  const bool isDiagram = model.isDiagram;
  show(*model.repository, {isDiagram ? files.front() : "", files.front(),
                           isDiagram ? before : FileStamp(), notesOf(model.report)});
  showMost();
}

void Document::reload() {
  canvas::Viewport& view = m_canvas->viewport();
  const double zoom = view.zoom();
  const platform::Point corner = view.visible().topLeft();
  open({path()});
  view.zoomTo(zoom);
  view.scrollTo(corner);
}

void Document::makeDemo() {
  m_editor->MakeDemo();
  showMost();
}

void Document::showMost() {
  if (m_canvas->scene().nodes().size() == 0) return;
  canvas::Viewport& view = m_canvas->viewport();
  view.fit(m_canvas->scene().extent());
  if (view.zoom() >= kLeastReadableZoom) return;
  const canvas::Node* hub = nullptr;
  for (const canvas::Node& node : m_canvas->scene().nodes()) {
    if (!hub || node.attached().size() > hub->attached().size()) hub = &node;
  }
  view.zoomTo(kLeastReadableZoom);
  if (hub) view.centerOn(hub->bounds().center());
  // No more empty ground beyond the outermost classes than a margin.
  const platform::Rect all = m_canvas->scene().extent().grownBy(kMargin);
  const platform::Rect seen = view.visible();
  view.scrollTo({std::clamp(seen.left, all.left, std::max(all.left, all.right() - seen.width)),
                 std::clamp(seen.top, all.top, std::max(all.top, all.bottom() - seen.height))});
}

void Document::show(MetaRepository& repository, Origin origin) {
  m_editor->showRepository(repository);
  m_editor->RepositoryFileName(origin.path);
  m_source = std::move(origin.source);
  m_stamp = origin.stamp;
  m_notes = std::move(origin.notes);
  m_modelChanged = repository.onChange([this](const platform::Change&) { Changed(); });
  settle();
}

bool Document::save() { return path().empty() ? saveAs() : saveNow(); }

bool Document::saveAs() {
  platform::FileDialog dialog = kSaveDialog;
  dialog.path = suggestedPath();
  const auto chosen = m_registry.shell().askSaveFile(dialog);
  if (!chosen) return false;
  const std::string before = path();
  m_editor->RepositoryFileName(*chosen);
  if (saveNow()) return true;
  m_editor->RepositoryFileName(before);
  return false;
}

bool Document::saveNow() {
  m_outcome = Outcome::none;
  m_editor->SaveDiagram();
  if (m_outcome == Outcome::none) SaveFailed("The drawing could not be stored in the model.");
  return m_outcome == Outcome::saved;
}

std::string Document::suggestedPath() const {
  if (!path().empty()) return path();
  if (m_source.empty()) return "Untitled.dim";
  return m_source.substr(0, m_source.find_last_of('.')) + ".dim";
}

bool Document::agreeOnTarget(std::string& path) {
  if (!m_stamp.isOf(path)) return true;
  const FileStamp::Change change = m_stamp.change();
  if (change == FileStamp::Change::none) return true;
  const bool gone = change == FileStamp::Change::vanished;
  const std::string whatHappened = gone ? "\" was moved or deleted by another program."
                                        : "\" was changed by another program since it was read. Overwriting it "
                                              "loses that change.";
  const std::string goOn = gone ? "Write Again" : "Overwrite";
  const std::string answer = m_registry.shell().showMessage({"Brisel",
                                                             "\"" + fileName(path) + whatHappened,
                                                             {"Save As", goOn, "Cancel"},
                                                             platform::MessageIcon::warning});
  if (answer == goOn) return true;
  m_outcome = Outcome::declined;
  if (answer != "Save As") return false;
  platform::FileDialog dialog = kSaveDialog;
  dialog.path = path;
  const auto chosen = m_registry.shell().askSaveFile(dialog);
  if (chosen) path = *chosen;
  return chosen.has_value();
}

void Document::succeeded(const std::string& path) {
  m_outcome = Outcome::saved;
  m_editor->RepositoryFileName(path);
  m_stamp = FileStamp(path);
  settle();
}

void Document::failed(const std::string& cause) {
  m_outcome = Outcome::failed;
  SaveFailed(cause);
}

void Document::settle() {
  m_settledChanges = model().changeCount();
  m_settledGeometry = geometryFingerprint();
  m_knownRevision = m_canvas->scene().geometryRevision();
  m_knownGeometry = m_settledGeometry;
  Changed();
}

std::string Document::title() const {
  if (!path().empty()) return fileName(path());
  return m_source.empty() ? "Untitled" : fileName(m_source);
}

bool Document::isModified() const {
  if (model().changeCount() != m_settledChanges) return true;
  if (const auto revision = m_canvas->scene().geometryRevision(); revision != m_knownRevision) {
    m_knownGeometry = geometryFingerprint();
    m_knownRevision = revision;
  }
  return m_knownGeometry != m_settledGeometry;
}

bool Document::isUntouched() const { return path().empty() && m_source.empty() && !isModified(); }

bool Document::shows(const std::string& file) const {
  const std::string own = path().empty() ? m_source : path();
  std::error_code none;
  return !own.empty() && (own == file || std::filesystem::equivalent(own, file, none));
}

MetaRepository& Document::model() const { return *m_editor->Repository(); }

std::uint64_t Document::geometryFingerprint() const {
  Fingerprint print;
  for (const canvas::Node& node : m_canvas->scene().nodes()) {
    const platform::Rect bounds = node.bounds();
    print.add(node.key());
    for (const double value : {bounds.left, bounds.top, bounds.width, bounds.height}) {
      print.add(value);
    }
  }
  for (const canvas::Link& link : m_canvas->scene().links()) {
    print.add(link.key());
    for (const platform::Point& bend : link.bends()) {
      print.add(bend.x);
      print.add(bend.y);
    }
  }
  return print.value();
}

Document::Counts Document::counts() const {
  Counts counts;
  counts.classes = countOf(model(), types::kClass);
  for (const RelationshipWords& words : kRelationships) {
    counts.relationships += countOf(model(), words.type);
  }
  counts.shownClasses = static_cast<std::int64_t>(m_canvas->scene().nodes().size());
  counts.shownRelationships = static_cast<std::int64_t>(m_canvas->scene().links().size());
  return counts;
}

std::string Document::describe(std::string_view key) const {
  if (const auto found = platform::as<Node>(model().MetaNodes(types::kClass)->find(key))) {
    return found->name() + ": " +
           counted(found->outgoing("Class.Has.Attrib")->Count(), "attribute") + ", " +
           counted(found->outgoing("Class.Has.Operation")->Count(), "operation");
  }
  for (const RelationshipWords& words : kRelationships) {
    const auto found = platform::as<Node>(model().MetaNodes(words.type)->find(key));
    if (!found) continue;
    const std::string name = found->name().empty() ? "" : " \"" + found->name() + "\"";
    return std::string(words.type) + name + " from " + endName(*found, words.type, words.from) +
           " to " + endName(*found, words.type, words.to);
  }
  return {};
}

}  // namespace brisel::component
