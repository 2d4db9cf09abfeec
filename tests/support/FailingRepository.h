#pragma once

#include "platform/Error.h"
#include "platform/Repository.h"

namespace brisel::test {

/// A repository that hands everything on to another one until it is to fail: when it is called, or
/// after it made a change, of a property too. Faults that the real store does not produce.
class FailingRepository : public platform::MetaRepository {
 public:
  template <class T>
  using Ref = platform::Ref<T>;
  using Text = std::string_view;

  enum class When { called, changed };

  explicit FailingRepository(Ref<platform::MetaRepository> real)
      : m_real(std::move(real)), m_listening(m_real->onChange([this](const platform::Change&) {
          count(When::changed);
        })) {}

  /// The call, or change, of that number from now on fails, once; 0 for none.
  void failAt(When when, std::int64_t number) {
    m_when = when;
    m_chances = 0;
    m_failing = number;
  }
  /// How many there were since.
  [[nodiscard]] std::int64_t chances() const { return m_chances; }

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
  void count(When when = When::called) const {
    if (when != m_when || ++m_chances != m_failing) return;
    throw platform::Error(platform::ErrorNumber::invalidCall, "The repository fails");
  }

  Ref<platform::MetaRepository> m_real;
  platform::Connection m_listening;
  When m_when = When::called;
  mutable std::int64_t m_chances = 0;
  std::int64_t m_failing = 0;
};

}  // namespace brisel::test
