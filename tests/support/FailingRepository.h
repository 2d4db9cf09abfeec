#pragma once

#include "platform/Error.h"
#include "platform/Repository.h"

namespace brisel::test {

/// A repository that hands everything on to another one until a call is to fail: a fault that the
/// real store does not produce.
class FailingRepository : public platform::MetaRepository {
 public:
  template <class T>
  using Ref = platform::Ref<T>;
  using Text = std::string_view;

  explicit FailingRepository(Ref<platform::MetaRepository> real) : m_real(std::move(real)) {}

  /// The call of that number from now on fails, once; 0 for none.
  void failAt(std::int64_t call) {
    m_calls = 0;
    m_failing = call;
  }
  [[nodiscard]] std::int64_t calls() const { return m_calls; }

  void Init() override { m_real->Init(); }
  [[nodiscard]] Ref<platform::MetaType> MetaNodes(Text type) const override {
    count();
    return m_real->MetaNodes(type);
  }
  [[nodiscard]] Ref<platform::MetaType> MetaLinks(Text type) const override {
    count();
    return m_real->MetaLinks(type);
  }
  Ref<platform::Node> MakeNode(Text type, Text name, Text identifier) override {
    count();
    return m_real->MakeNode(type, name, identifier);
  }
  Ref<platform::Link> MakeLink(Text type, Text name, Text identifier, platform::Node& source,
                               platform::Node& target) override {
    count();
    return m_real->MakeLink(type, name, identifier, source, target);
  }
  void RemoveAssoc(platform::Link& link) override {
    count();
    m_real->RemoveAssoc(link);
  }
  [[nodiscard]] Ref<platform::Collection> nodeTypes() const override { return m_real->nodeTypes(); }
  [[nodiscard]] Ref<platform::Collection> linkTypes() const override { return m_real->linkTypes(); }
  [[nodiscard]] platform::Connection onChange(
      std::function<void(const platform::Change&)> listener) override {
    return m_real->onChange(std::move(listener));
  }
  [[nodiscard]] std::uint64_t changeCount() const override { return m_real->changeCount(); }

 private:
  void count() const {
    if (++m_calls != m_failing) return;
    throw platform::Error(platform::ErrorNumber::invalidCall, "The repository fails");
  }

  Ref<platform::MetaRepository> m_real;
  mutable std::int64_t m_calls = 0;
  std::int64_t m_failing = 0;
};

}  // namespace brisel::test
