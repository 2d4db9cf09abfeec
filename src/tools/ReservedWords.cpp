#include "tools/ReservedWords.h"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "platform/Text.h"

namespace brisel::tools {

namespace {

using Words = std::unordered_set<std::string_view>;

/// Keywords, and what generated text calls "std".
constexpr std::string_view kCppKeywords =
    "alignas alignof and and_eq asm auto bitand bitor bool break case catch char char16_t "
    "char32_t char8_t class co_await co_return co_yield compl concept const const_cast consteval "
    "constexpr constinit continue decltype default delete do double dynamic_cast else enum "
    "explicit export extern false final float for friend goto if import inline int long module "
    "mutable namespace new noexcept not not_eq nullptr operator or or_eq override private "
    "protected public register reinterpret_cast requires return short signed sizeof static "
    "static_assert static_cast std struct switch template this thread_local throw true try "
    "typedef typeid typename union unsigned using virtual void volatile wchar_t while xor xor_eq";

/// Macros that standard headers define, unless they begin or end as those below do.
constexpr std::string_view kCppMacros =
    "BIG_ENDIAN BUFSIZ BYTE_ORDER CHAR_BIT CLOCKS_PER_SEC CLOSE_RANGE_CLOEXEC CLOSE_RANGE_UNSHARE "
    "CSIGNAL E2BIG EACCES EADDRINUSE EADDRNOTAVAIL EADV EAFNOSUPPORT EAGAIN EALREADY EBADE EBADF "
    "EBADFD EBADMSG EBADR EBADRQC EBADSLT EBFONT EBUSY ECANCELED ECHILD ECHRNG ECOMM ECONNABORTED "
    "ECONNREFUSED ECONNRESET EDEADLK EDEADLOCK EDESTADDRREQ EDOM EDOTDOT EDQUOT EEXIST EFAULT "
    "EFBIG EHOSTDOWN EHOSTUNREACH EHWPOISON EIDRM EILSEQ EINPROGRESS EINTR EINVAL EIO EISCONN "
    "EISDIR EISNAM EKEYEXPIRED EKEYREJECTED EKEYREVOKED EL2HLT EL2NSYNC EL3HLT EL3RST ELIBACC "
    "ELIBBAD ELIBEXEC ELIBMAX ELIBSCN ELNRNG ELOOP EMEDIUMTYPE EMFILE EMLINK EMSGSIZE EMULTIHOP "
    "ENAMETOOLONG ENAVAIL ENETDOWN ENETRESET ENETUNREACH ENFILE ENOANO ENOBUFS ENOCSI ENODATA "
    "ENODEV ENOENT ENOEXEC ENOKEY ENOLCK ENOLINK ENOMEDIUM ENOMEM ENOMSG ENONET ENOPKG "
    "ENOPROTOOPT ENOSPC ENOSR ENOSTR ENOSYS ENOTBLK ENOTCONN ENOTDIR ENOTEMPTY ENOTNAM "
    "ENOTRECOVERABLE ENOTSOCK ENOTSUP ENOTTY ENOTUNIQ ENXIO EOF EOPNOTSUPP EOVERFLOW EOWNERDEAD "
    "EPERM EPFNOSUPPORT EPIPE EPROTO EPROTONOSUPPORT EPROTOTYPE ERANGE EREMCHG EREMOTE EREMOTEIO "
    "ERESTART ERFKILL EROFS ESHUTDOWN ESOCKTNOSUPPORT ESPIPE ESRCH ESRMNT ESTALE ESTRPIPE ETIME "
    "ETIMEDOUT ETOOMANYREFS ETXTBSY EUCLEAN EUNATCH EUSERS EWOULDBLOCK EXDEV EXFULL LITTLE_ENDIAN "
    "MAX_CANON MAX_INPUT NFDBITS NULL NZERO PDP_ENDIAN PIPE_BUF R_OK TEMP_FAILURE_RETRY TIME_UTC "
    "WCONTINUED WEOF WEXITED WEXITSTATUS WIFCONTINUED WIFEXITED WIFSIGNALED WIFSTOPPED WNOHANG "
    "WNOWAIT WORD_BIT WSTOPPED WSTOPSIG WTERMSIG WUNTRACED W_OK X_OK alloca be16toh be32toh "
    "be64toh errno htobe16 htobe32 htobe64 htole16 htole32 htole64 le16toh le32toh le64toh linux "
    "offsetof pthread_cleanup_pop pthread_cleanup_pop_restore_np pthread_cleanup_push "
    "pthread_cleanup_push_defer_np sched_priority stderr stdin stdout unix";

/// How all other macros of theirs begin or end.
constexpr std::string_view kMacroStarts =
    "ADJ_ ATOMIC_ BC_ CLOCK_ CLONE_ CPU_ EXIT_ FD_ F_ INT_ LC_ LLONG_ LONG_ L_ MB_ MOD_ NL_ "
    "PTHREAD_ P_ RENAME_ RE_ SCHAR_ SCHED_ SEEK_ SHRT_ STA_ SYS_ TIMER_ UCHAR_ UINT_ ULLONG_ "
    "ULONG_ USHRT_ XATTR_";
constexpr std::string_view kMacroEnds = "_MAX _MIN _WIDTH _C _FILENO";

/// Keywords, the classes that generated text names, and the methods that every object has.
constexpr std::string_view kJavaWords =
    "ArrayList Boolean Byte Character Double Enum Float HashMap Integer Iterable List "
    "LocalDateTime Long Map Object Optional Override Record Short String _ abstract assert "
    "boolean break byte case catch char class clone const continue default do double else enum "
    "equals exports extends false final finalize finally float for getClass goto hashCode if "
    "implements import instanceof int interface long module native new notify notifyAll null open "
    "opens package permits private protected provides public record requires return sealed short "
    "static strictfp super switch synchronized this throw throws to toString transient transitive "
    "true try uses var void volatile wait when while with yield";

/// Reserved in at least one of the common dialects.
constexpr std::string_view kSqlWords =
    "abort action add after all alter always analyze and any array as asc attach authorization "
    "autoincrement before begin between both by cascade case cast check collate column commit "
    "conflict constraint create cross cube current current_catalog current_date current_role "
    "current_time current_timestamp current_user cursor database default deferrable deferred "
    "delete desc detach distinct do drop each else end escape except exclude exclusive exec "
    "execute exists explain external fail false fetch filter first following for foreign from "
    "full function generated glob grant group grouping groups having identity if ignore immediate "
    "in index indexed initially inner insert instead int integer intersect interval into is "
    "isnull join key last lateral leading left level like limit local localtime localtimestamp "
    "match materialized merge method minus multiset natural new no not nothing notnull null nulls "
    "of off offset old on only open option or order others out outer over overlaps partition plan "
    "position pragma preceding primary privileges procedure public query raise range read real "
    "recursive references reindex release rename replace restrict result return returning returns "
    "revoke right role rollback rollup row rownum rows savepoint schema scroll select sequence "
    "session session_user set size some sql start statement static symmetric system system_user "
    "table tables tablesample temp temporary then ties time timestamp to top trailing transaction "
    "trigger true truncate type uid unbounded union unique unknown update upper user using vacuum "
    "value values varchar view virtual when whenever where window with within without work year "
    "zone";

/// The words between the blanks of a table, which is a constant.
Words wordsOf(std::string_view table) {
  Words words;
  while (!table.empty()) {
    const auto end = table.find(' ');
    words.insert(table.substr(0, end));
    table.remove_prefix(end == std::string_view::npos ? table.size() : end + 1);
  }
  return words;
}

bool isMacro(std::string_view word) {
  static const Words kMacros = wordsOf(kCppMacros);
  static const Words kStarts = wordsOf(kMacroStarts);
  static const Words kEnds = wordsOf(kMacroEnds);
  return kMacros.contains(word) ||
         std::any_of(kStarts.begin(), kStarts.end(),
                     [word](std::string_view start) { return word.starts_with(start); }) ||
         std::any_of(kEnds.begin(), kEnds.end(),
                     [word](std::string_view end) { return word.ends_with(end); });
}

}  // namespace

bool isCppWord(std::string_view word) {
  static const Words kWords = wordsOf(kCppKeywords);
  return kWords.contains(word) || isMacro(word);
}

bool isJavaWord(std::string_view word) {
  static const Words kWords = wordsOf(kJavaWords);
  return kWords.contains(word);
}

bool isSqlWord(std::string_view word) {
  static const Words kWords = wordsOf(kSqlWords);
  std::string lower(word);
  std::transform(lower.begin(), lower.end(), lower.begin(), platform::lowerCase);
  return kWords.contains(lower);
}

}  // namespace brisel::tools
