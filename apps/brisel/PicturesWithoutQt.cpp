#include "Pictures.h"
#include "platform/Error.h"

namespace brisel::app {

namespace {

[[noreturn]] void fail() {
  throw platform::Error(platform::ErrorNumber::invalidCall,
                        "this program was built without Qt and writes no .png or .pdf; .svg works");
}

}  // namespace

std::string drawPng(const canvas::Scene&, double) { fail(); }
std::string drawPdf(const canvas::Scene&) { fail(); }

}  // namespace brisel::app
