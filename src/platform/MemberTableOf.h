#pragma once

#include <cmath>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/Error.h"
#include "platform/Event.h"
#include "platform/MemberTable.h"

/// Turns typed C++ members into rows of a MemberTable. Included only where a table is declared.
///
/// How parameter types read: values (bool, int, std::int64_t, double, std::string_view, Value) are
/// in arguments of that kind, where an empty value stands for the default of its type;
/// `T&` is an object that must be given, `T*` one that may be empty, `Ref<T>&` an out argument.
namespace brisel::platform {

namespace detail {

[[noreturn]] inline void wrongKind(std::string_view member, std::size_t index,
                                   std::string_view wanted, const Value& given) {
  throw CallError(ErrorNumber::typeMismatch, "Wrong kind of argument " + std::to_string(index + 1) +
                                                 " of " + std::string(member) + ": " +
                                                 std::string(wanted) + " expected, " +
                                                 std::string(given.kindName()) + " given");
}

/// True for an integer and for a double that holds one exactly.
inline bool isWhole(const Value& value) {
  if (!value.isDouble()) return value.isInteger();
  const double number = value.number();
  return std::abs(number) <= 9007199254740992.0 && std::trunc(number) == number;
}

template <class T>
T* objectFrom(const Value& value) {
  return value.isObject() ? dynamic_cast<T*>(value.object().get()) : nullptr;
}

/// Reads one argument; `Parameter` is the parameter's type as written.
template <class Parameter>
struct Argument {
  using Plain = std::remove_cvref_t<Parameter>;
  static constexpr bool kOut = false;

  static Plain read(const Value& value, std::string_view member, std::size_t index) {
    if constexpr (std::is_same_v<Plain, Value>) {
      return value;
    } else if constexpr (std::is_same_v<Plain, bool>) {
      if (value.isEmpty()) return false;
      if (!value.isBoolean()) wrongKind(member, index, "Boolean", value);
      return value.boolean();
    } else if constexpr (std::is_integral_v<Plain>) {
      if (value.isEmpty()) return 0;
      if (!isWhole(value)) wrongKind(member, index, "integer", value);
      const std::int64_t wide = value.integer();
      if (!std::in_range<Plain>(wide)) {
        throw CallError(ErrorNumber::typeMismatch, "Argument " + std::to_string(index + 1) +
                                                       " of " + std::string(member) +
                                                       " is out of range: " + value.text());
      }
      return static_cast<Plain>(wide);
    } else if constexpr (std::is_floating_point_v<Plain>) {
      if (value.isEmpty()) return 0;
      if (!value.isInteger() && !value.isDouble()) wrongKind(member, index, "number", value);
      return value.number();
    } else {
      static_assert(std::is_same_v<Plain, std::string> || std::is_same_v<Plain, std::string_view>);
      if (value.isEmpty()) return {};
      if (!value.isString()) wrongKind(member, index, "string", value);
      return value.string();
    }
  }
};

template <class T>
requires std::is_base_of_v<Object, T>
struct Argument<T&> {
  static constexpr bool kOut = false;
  static T& read(const Value& value, std::string_view member, std::size_t index) {
    T* object = objectFrom<T>(value);
    if (!object) wrongKind(member, index, "an object of the right kind", value);
    return *object;
  }
};

template <class T>
requires std::is_base_of_v<Object, T>
struct Argument<T*> {
  static constexpr bool kOut = false;
  static T* read(const Value& value, std::string_view member, std::size_t index) {
    T* object = objectFrom<T>(value);
    if (!object && !value.isEmpty()) wrongKind(member, index, "an object of the right kind", value);
    return object;
  }
};

/// An out argument: what the caller passed is ignored, what the member set is written back.
template <class T>
struct Argument<Ref<T>&> {
  static constexpr bool kOut = true;
  class Slot {
   public:
    explicit Slot(Value& value) : m_value(value) {}
    ~Slot() { m_value = m_reference ? Value(m_reference) : Value(); }
    Slot(const Slot&) = delete;
    Slot& operator=(const Slot&) = delete;
    operator Ref<T>&() { return m_reference; }

   private:
    Value& m_value;
    Ref<T> m_reference;
  };
};

template <class Parameter>
decltype(auto) readArgument(Value& value, std::string_view member, std::size_t index) {
  if constexpr (Argument<Parameter>::kOut) {
    return typename Argument<Parameter>::Slot(value);
  } else {
    return Argument<Parameter>::read(value, member, index);
  }
}

template <class Result>
Value toValue(Result&& result) {
  using Plain = std::remove_cvref_t<Result>;
  if constexpr (std::is_base_of_v<Object, Plain>) {
    return Value(Ref<Plain>(&result));
  } else if constexpr (std::is_pointer_v<Plain> &&
                       std::is_base_of_v<Object, std::remove_pointer_t<Plain>>) {
    return Value(Ref<std::remove_pointer_t<Plain>>(result));
  } else if constexpr (std::is_integral_v<Plain> && !std::is_same_v<Plain, bool>) {
    return Value(static_cast<std::int64_t>(result));
  } else {
    return Value(std::forward<Result>(result));
  }
}

}  // namespace detail

template <class T>
class MemberTableOf {
 public:
  MemberTableOf() = default;
  /// Starts with the members of the base class.
  explicit MemberTableOf(const MemberTable& base) : m_table(base) {}

  template <class R, class... A>
  MemberTableOf& method(std::string name, R (T::*function)(A...)) {
    return addMethod<R, A...>(std::move(name), function, std::index_sequence_for<A...>());
  }
  template <class R, class... A>
  MemberTableOf& method(std::string name, R (T::*function)(A...) const) {
    return addMethod<R, A...>(std::move(name), function, std::index_sequence_for<A...>());
  }
  /// The last `count` in arguments of the method added last may be left away.
  MemberTableOf& optional(std::size_t count) {
    m_last.required -= count;
    m_table.add(m_last);
    return *this;
  }

  /// Getter and setter may be overloads of one name.
  template <class R>
  MemberTableOf& property(std::string name, R (T::*getter)() const) {
    return addProperty(std::move(name), read(getter), {});
  }
  template <class R, class A>
  MemberTableOf& property(std::string name, R (T::*getter)() const, void (T::*setter)(A)) {
    auto assign = [setter, name](Object& object, const Value& value) {
      (dynamic_cast<T&>(object).*setter)(detail::Argument<A>::read(value, name, 0));
    };
    return addProperty(std::move(name), read(getter), std::move(assign));
  }

  template <class... A>
  MemberTableOf& event(std::string name, Event<A...> T::*event) {
    Member member;
    member.name = std::move(name);
    member.kind = Member::Kind::event;
    member.arguments = sizeof...(A);
    member.listen = [event](Object& object, EventListener listener) {
      return (dynamic_cast<T&>(object).*event).connect([listener](A... arguments) {
        listener({detail::toValue(arguments)...});
      });
    };
    m_table.add(std::move(member));
    return *this;
  }

  [[nodiscard]] MemberTable build() { return std::move(m_table); }

 private:
  template <class R, class... A, class Function, std::size_t... I>
  MemberTableOf& addMethod(std::string name, Function function, std::index_sequence<I...>) {
    Member member;
    member.name = name;
    member.kind = Member::Kind::method;
    member.arguments = sizeof...(A);
    member.outArguments = (std::size_t{0} + ... + (detail::Argument<A>::kOut ? 1U : 0U));
    member.required = member.arguments - member.outArguments;
    member.call = [function, name]([[maybe_unused]] Object& object,
                                   [[maybe_unused]] std::vector<Value>& given) -> Value {
      T& self = dynamic_cast<T&>(object);
      if constexpr (std::is_void_v<R>) {
        (self.*function)(detail::readArgument<A>(given[I], name, I)...);
        return {};
      } else {
        return detail::toValue((self.*function)(detail::readArgument<A>(given[I], name, I)...));
      }
    };
    m_last = member;
    m_table.add(std::move(member));
    return *this;
  }

  template <class R>
  static auto read(R (T::*getter)() const) {
    return [getter](Object& object, std::vector<Value>&) -> Value {
      return detail::toValue((dynamic_cast<const T&>(object).*getter)());
    };
  }

  template <class Call>
  MemberTableOf& addProperty(std::string name, Call call,
                             std::function<void(Object&, const Value&)> assign) {
    Member member;
    member.name = std::move(name);
    member.kind = Member::Kind::property;
    member.call = std::move(call);
    member.assign = std::move(assign);
    m_table.add(std::move(member));
    return *this;
  }

  MemberTable m_table;
  Member m_last;
};

}  // namespace brisel::platform
