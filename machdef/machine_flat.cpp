// The flat functions on machine definitions. (Orientation stands with the kinematics.)
#include <k5ax/machdef.h>

using md::CMachDef;

extern "C" CMachDef* k5axCMachDef_create(void) { return new CMachDef; }

extern "C" void k5axCMachDef_free(CMachDef** machdef) {
  // Deliberate: the caller's pointer keeps the address; hosts compare it afterwards to tell which one went.
  delete *machdef;
}

extern "C" void k5axCMachDef_clone(CMachDef* dst, const CMachDef* src) { k5axCMachDef_clone_ex(dst, src, 3); }

extern "C" void k5axCMachDef_clone_ex(CMachDef* dst, const CMachDef* src, unsigned int flags) {
  if (dst != nullptr) dst->clone(*src, flags);
}

extern "C" unsigned int k5axCMachDef_flags_get(const CMachDef* machdef) {
  return machdef != nullptr ? machdef->flags() : 0;
}

extern "C" void k5axCMachDef_flags_set(CMachDef* machdef, unsigned int flags) {
  if (machdef != nullptr) machdef->flags(flags);
}

extern "C" MACHINE_MODE k5axCMachDef_mode(const CMachDef* machdef) {
  return machdef != nullptr ? machdef->get_mode() : static_cast<MACHINE_MODE>(-1);
}

extern "C" MACHINE_TYPE k5axCMachDef_type(const CMachDef* machdef) {
  return machdef != nullptr ? machdef->getMachType() : MC_UNDEFINED;
}

// Deliberate: the one getter without a test for null.
extern "C" K5AX_DISCIPLINE k5axCMachDef_discipline(const CMachDef* machdef) { return machdef->discipline(); }

extern "C" angled_head* k5axCMachDef_head(CMachDef* machdef) {
  return machdef != nullptr ? &machdef->head() : nullptr;
}

extern "C" const angled_head* k5axCMachDef_head_const(const CMachDef* machdef) {
  return machdef != nullptr ? &machdef->head() : nullptr;
}

extern "C" md::CAxis2* k5axCMachDef_axis(int which, CMachDef* machdef) {
  if (machdef == nullptr) return nullptr;
  if (which == 0) return machdef->getPrimary().get();
  if (which == 1) return machdef->getSecondary().get();
  return nullptr;
}

extern "C" md::CAxis2* k5axCMachDef_rotary_axis(CMachDef* machdef) {
  return machdef != nullptr ? machdef->rotary_axis().get() : nullptr;
}

extern "C" const md::CAxis2* k5axCMachDef_rotary_axis_const(const CMachDef* machdef) {
  return machdef != nullptr ? machdef->rotary_axis().get() : nullptr;
}

extern "C" bool k5axCMachDef_orthogonal(const CMachDef* machdef) {
  return machdef != nullptr && machdef->is_orthogonal();
}

extern "C" md::sg::node* k5axCMachDef_SG(CMachDef* machdef, int i) {
  return machdef != nullptr ? machdef->SG()[static_cast<std::size_t>(i)].get() : nullptr;
}

extern "C" k5ax_tool_node* k5axCMachDef_Tool(CMachDef* machdef) {
  return machdef != nullptr ? machdef->tool_node().get() : nullptr;
}

namespace {

// The stream's destructor closes the file, and may fail in doing so.
int serialize_file(CMachDef& machdef, const char* path, IIO::FILE_MODE mode) {
  try {
    IIO::FileStream stream(path, mode);
    machdef.serialize(stream);
  } catch (...) {
    return 0;
  }
  return 1;
}

}  // namespace

extern "C" int MachdefSave(CMachDef* machdef, const char* path) {
  return serialize_file(*machdef, path, IIO::FILE_WRITE);
}

extern "C" int MachdefLoad(CMachDef* machdef, const char* path) {
  return serialize_file(*machdef, path, IIO::FILE_READ);
}
