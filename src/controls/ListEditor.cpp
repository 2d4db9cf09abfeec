#include "controls/ListEditor.h"

namespace brisel::controls {

void ListEditor::repository(platform::MetaRepository*) {}
void ListEditor::open(std::string_view) {}
void ListEditor::init() {}
void ListEditor::deinit() {}
void ListEditor::destroy() {}
platform::Ref<platform::Collection> ListEditor::Rows() const { return {}; }
std::int64_t ListEditor::Add(std::string_view) { return 0; }
void ListEditor::Rename(std::int64_t, std::string_view) {}
void ListEditor::Remove(std::int64_t) {}
const platform::MemberTable& ListEditor::memberTable() const { return Control::memberTable(); }

}  // namespace brisel::controls
