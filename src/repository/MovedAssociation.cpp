#include "repository/MovedAssociation.h"

#include "platform/MemberTableOf.h"

namespace brisel::repository {

const platform::MemberTable& MovedAssociation::memberTable() const {
  using M = MovedAssociation;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<M>()
          .property("clsAssoc", &M::clsAssoc, &M::clsAssoc)
          .property("clsSource", &M::clsSource, &M::clsSource)
          .property("clsTarget", &M::clsTarget, &M::clsTarget)
          .build();
  return kTable;
}

}  // namespace brisel::repository
