#include "LoadableModule.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace tessane {
namespace {

// The folders the program's own libraries are looked for in, in order: its run path first. Asked
// of the program itself rather than left to dlopen, which searches the run path of its caller, and
// the caller is not always the program (a sanitizer's runtime intercepts dlopen, for one).
std::vector<std::string> librarySearchPath() {
  std::vector<std::string> out;
  void* program = ::dlopen(nullptr, RTLD_NOW);
  if (program == nullptr) return out;
  Dl_serinfo size{};
  if (::dlinfo(program, RTLD_DI_SERINFOSIZE, &size) == 0 && size.dls_size >= sizeof(Dl_serinfo)) {
    const auto buffer =
        std::make_unique<std::max_align_t[]>(size.dls_size / sizeof(std::max_align_t) + 1);
    auto* info = reinterpret_cast<Dl_serinfo*>(buffer.get());
    *info = size;
    if (::dlinfo(program, RTLD_DI_SERINFO, info) == 0) {
      for (unsigned i = 0; i < info->dls_cnt; ++i)
        out.emplace_back(info->dls_serpath[i].dls_name);
    }
  }
  ::dlclose(program);
  return out;
}

}  // namespace

void LoadableModule::load() {
  // RTLD_LOCAL keeps the module's libraries out of the program's symbol lookup.
  for (const std::string& folder : librarySearchPath()) {
    const std::string candidate = folder + "/" + file_;
    if (::access(candidate.c_str(), F_OK) != 0) continue;
    handle_ = ::dlopen(candidate.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ != nullptr) return;
    break;  // found but not loadable: dlerror() says why
  }
  if (handle_ == nullptr) handle_ = ::dlopen(file_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) {
    const char* why = ::dlerror();
    const std::lock_guard lock(mutex_);
    problem_ = why != nullptr ? why : file_ + ": can't be loaded";
  }
}

void* LoadableModule::symbol(const char* name) {
  std::call_once(once_, [this] { load(); });
  if (handle_ == nullptr) return nullptr;
  void* found = ::dlsym(handle_, name);
  if (found == nullptr) {
    const std::lock_guard lock(mutex_);
    problem_ = file_ + ": no " + name;
  }
  return found;
}

std::string LoadableModule::problem() {
  const std::lock_guard lock(mutex_);
  return problem_;
}

}  // namespace tessane
