#include "platform/MemberTableOf.h"
#include "tools/MatrixBrowser.h"

namespace brisel::tools {

const platform::MemberTable& MatrixBrowser::memberTable() const {
  using M = MatrixBrowser;
  static const platform::MemberTable table =
      platform::MemberTableOf<M>()
          .method("Create", &M::Create)
          .property<std::string, Text>("Path", &M::Path, &M::Path)
          .method("SetRepository", &M::SetRepository)
          .method("PopUp", &M::PopUp)
          .method("Rows", &M::Rows)
          .method("Columns", &M::Columns)
          .method("Cell", &M::Cell)
          .method("Words", &M::Words)
          .method("Groups", &M::Groups)
          .method("Incomplete", &M::Incomplete)
          .method("Stereotypes", &M::Stereotypes)
          .method("Filter", &M::Filter)
          .optional(3)
          .property<std::string, Text>("NameFilter", &M::NameFilter, &M::NameFilter)
          .property<std::string, Text>("StereotypeFilter", &M::StereotypeFilter,
                                       &M::StereotypeFilter)
          .property<std::string, Text>("KindFilter", &M::KindFilter, &M::KindFilter)
          .property<bool, bool>("Neighbours", &M::Neighbours, &M::Neighbours)
          .property<bool, bool>("RelatedOnly", &M::RelatedOnly, &M::RelatedOnly)
          .method("Sort", &M::Sort)
          .property("Order", &M::Order)
          .method("Make", &M::Make)
          .method("Objection", &M::Objection)
          .method("Delete", &M::Delete)
          .optional(1)
          .method("CurrentRow", &M::CurrentRow)
          .method("CurrentColumn", &M::CurrentColumn)
          .method("Select", &M::Select)
          .method("Choose", &M::Choose)
          .method("KeyPress", &M::KeyPress)
          .optional(1)
          .method("Close", &M::Close)
          .event("Changed", &M::Changed)
          .event("CurrentChanged", &M::CurrentChanged)
          .event("MenuAsked", &M::MenuAsked)
          .event("FrontAsked", &M::FrontAsked)
          .event("Closed", &M::Closed)
          .event("Selected", &M::Selected)
          .event("Edited", &M::Edited)
          .build();
  return table;
}

}  // namespace brisel::tools
