// What a library calls of others stands in a table of its own, with a name and a place for each function.

#include "redirected_call.h"

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>

namespace {

using k5ax_test::AnyFunction;

// Null when the library does not call it.
AnyFunction* place_of(const char* name) {
  char* const library = reinterpret_cast<char*>(::GetModuleHandleW(L"k5ax.dll"));
  if (library == nullptr) throw std::runtime_error("the library is not loaded");

  const auto at = [library](DWORD offset) { return static_cast<void*>(library + offset); };
  const auto* const dos = static_cast<const IMAGE_DOS_HEADER*>(at(0));
  const auto* const nt = static_cast<const IMAGE_NT_HEADERS*>(at(static_cast<DWORD>(dos->e_lfanew)));
  const IMAGE_DATA_DIRECTORY& imports = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  const auto* from = static_cast<const IMAGE_IMPORT_DESCRIPTOR*>(at(imports.VirtualAddress));
  for (; from->Name != 0; ++from) {
    const auto* const names = static_cast<const IMAGE_THUNK_DATA*>(at(from->OriginalFirstThunk));
    auto* const places = static_cast<AnyFunction*>(at(from->FirstThunk));
    for (std::size_t i = 0; names[i].u1.AddressOfData != 0; ++i) {
      if (IMAGE_SNAP_BY_ORDINAL(names[i].u1.Ordinal)) continue;
      const auto* const entry =
          static_cast<const IMAGE_IMPORT_BY_NAME*>(at(static_cast<DWORD>(names[i].u1.AddressOfData)));
      if (std::strcmp(&entry->Name[0], name) == 0) return places + i;
    }
  }
  return nullptr;
}

void write_place(AnyFunction* place, AnyFunction function) {
  DWORD before = 0;
  if (::VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before) == 0)
    throw std::runtime_error("the table cannot be written");
  *place = function;
  ::VirtualProtect(place, sizeof *place, before, &before);
}

}  // namespace

k5ax_test::RedirectedCall::RedirectedCall(const char* name, AnyFunction replacement)
    : m_place(place_of(name)) {
  if (m_place == nullptr) throw std::runtime_error(std::string("the library does not call ") + name);
  m_before = *m_place;
  write_place(m_place, replacement);
}

k5ax_test::RedirectedCall::~RedirectedCall() { write_place(m_place, m_before); }
