// The calls that ask for no memory.
#include "faults/entry_points.h"

namespace k5ax_test {

using md::CAxis2;
using md::CMachDef;
using md::sg::node;
using Point = Geometry::TPoint<double>;

namespace {

void hear(const char*) {}
void hear_error(const char*, short) {}
void hear_assertion(const char*, const char*, const char*, long) {}

node* many_children(AllocationStage& stage) { return stage.branch.get(); }
node* a_leaf(AllocationStage& stage) { return stage.branch->child_list().front().get(); }
k5ax_axis_node& an_axis_node(AllocationStage& stage) { return *k5axSgNode_NodeAxis_cast(stage.tree.get()); }

}  // namespace

std::vector<QuietCalls> quiet_calls() {
  return {
      {"Callbacks",
       {"CUtility::set_feedback_cbk", "CUtility::set_error_cbk", "CUtility::set_assertion_handler_cbk",
        "CUtility::error", "CUtility::assertion_failed", "CUtility::developer", "CUtility::regression",
        "CUtility::flags", "md_flags_get", "md_flags_set", "md_regression"},
       [](AllocationStage&) {
         CUtility::set_feedback_cbk(hear);
         CUtility::set_error_cbk(hear_error);
         CUtility::set_assertion_handler_cbk(hear_assertion);
         CUtility::feedback("short");
         CUtility::error("short", 1);
         CUtility::assertion_failed("a", "b", "c", 1);
         CUtility::set_feedback_cbk({});
         CUtility::set_error_cbk({});
         CUtility::set_assertion_handler_cbk({});
         CUtility::developer(!CUtility::developer());
         CUtility::regression(!CUtility::regression());
         CUtility::flags(CUtility::flags());
         md_flags_set(md_flags_get() & 0U);
         md_regression();
       }},
      {"Angles",
       {"k5ax_R2D", "k5ax_D2R", "k5ax_normalise_angle"},
       [](AllocationStage&) { k5ax_normalise_angle(k5ax_R2D() * k5ax_D2R() * 1e9, 1); }},
      {"AngledHead",
       {"k5ax_angled_head_initialise", "k5ax_angled_head_copy", "k5ax_angled_head_flags_get",
        "k5ax_angled_head_flags_set", "k5ax_angled_head_set", "k5ax_is_angled_head",
        "k5ax_angled_head_scale"},
       [](AllocationStage&) {
         angled_head head;
         angled_head copy;
         const double lengths[] = {1, 2};
         k5ax_angled_head_initialise(&head);
         k5ax_angled_head_set(10, 20, lengths, 3, &head);
         k5ax_angled_head_copy(&copy, &head);
         k5ax_angled_head_scale(&copy, 2);
         k5ax_angled_head_flags_set(&copy, k5ax_angled_head_flags_get(&head));
         k5ax_is_angled_head(&copy);
       }},
      {"AxisRecord",
       {"axis_copy", "axis_free", "axis_location", "axis_limits", "axis_get_value", "axis_set_value"},
       [](AllocationStage& stage) {
         double x = 1;
         TAxis record = {};
         TAxis* none = nullptr;
         axis_copy(&record, k5ax_detail::record(stage.axis.get()));
         axis_set_value(&record, axis_get_value(&record, x, 2, 3), &x, &x, &x);
         axis_limits(&record)[0] = static_cast<double>(axis_location(&record));
         axis_free(&none);
       }},
      {"Axis",
       {"md::CAxis2::CAxis2", "md::CAxis2::~CAxis2", "md::CAxis2::operator=", "md::CAxis2::copy",
        "md::CAxis2::scale", "md::CAxis2::GetValue", "md::CAxis2::GetAngle", "md::CAxis2::SetValue",
        "md::CAxis2::is_valid", "md::CAxis2::is_orthogonal", "md::GetAxis"},
       [](AllocationStage& stage) {
         CAxis2 axis(*stage.axis);
         axis = *stage.axis;
         axis.copy(stage.axis);
         CAxis2::copy(stage.axis, stage.source.getPrimary());
         CAxis2::scale(stage.axis, 2);
         double x = CAxis2::GetValue(stage.axis, 1, 2, 3) + CAxis2::GetAngle(stage.axis, 1, 2, 3);
         axis.SetValue(axis.GetValue(1, 2, 3) + axis.GetAngle(1, 2, 3), x, x, x);
         if (axis.is_valid() && axis.is_orthogonal()) md::GetAxis(stage.axis);
       }},
      {"Letters",
       {"AXIS_TYPE_val_get"},
       [](AllocationStage&) {
         double x = 0;
         Point xyz;
         Point abc;
         AXIS_TYPE_val_get(AXIS_A, &x, &x, &x, &x, &x, &x);
         AXIS_TYPE_val_get(AXIS_X, xyz, abc);
       }},
      {"Node",
       {"k5axSgNode_child_count", "k5axSgNode_child", "k5axSgNode_parent", "k5axSgNode_id",
        "k5axSgNode_value_get", "k5axSgNode_value_set", "k5axSgNode_value_set2", "k5axSgNode_flags_get",
        "k5axSgNode_flags_set", "k5axSgNode_calc_flags", "k5axSgNode_NodeAxis_cast", "k5axSgNode_state_get",
        "k5axSgNode_state_get_", "md::sg::axis_node", "md::sg::tool_node"},
       [](AllocationStage& stage) {
         node* const n =
             k5axSgNode_child(many_children(stage), k5axSgNode_child_count(many_children(stage)) - 1);
         node_state state;
         k5axSgNode_state_get_(k5axSgNode_parent(n), &state);
         k5axSgNode_state_get(stage.tree, &state);
         k5axSgNode_value_set(n, k5axSgNode_value_get(n) + k5axSgNode_id(n));
         k5axSgNode_flags_set(n, k5axSgNode_flags_get(n) + k5axSgNode_calc_flags(1, 1));
         k5axSgNode_value_set2(0, k5axSgNode_NodeAxis_cast(stage.tree.get()), 1);
         md::sg::axis_node(n);
         md::sg::tool_node(n);
       }},
      {"NodeAlone",
       {"md::sg::node::reset", "md::sg::node::shallow_copy", "md::sg::node::remove_child",
        "md::sg::node::node", "md::sg::node::~node", "md::sg::tnode<angled_head>::payload",
        "md::sg::tnode<md::CAxis2>::payload"},
       [](AllocationStage& stage) {
         node::shallow_copy(stage.loose, stage.branch);
         stage.loose->initialise(false);
         stage.loose->scale_node(2, false);
         stage.tree->initialise(false);
         stage.tree->scale_node(2, false);
         an_axis_node(stage).payload().SetAxis(AXIS_A);
         md::sg::tool_node(stage.loose.get())->payload().b_angle = 1;
         stage.branch->remove_child(a_leaf(stage)->shared_from_this());
         stage.branch->parent(NodePtr());
         stage.branch->reset();  // releases what hangs there
       }},
      {"AxisNodeAndToolNode",
       {"md::NodeAxis_transform_calc", "md::NodeAxis_transform_set", "md::node_state_get",
        "md::node_state_set", "k5axSgToolNodeMatrixSet"},
       [](AllocationStage& stage) {
         const auto axis = boost::static_pointer_cast<k5ax_axis_node>(stage.tree);
         md::NodeAxis_transform_calc(0, axis, 1);
         md::NodeAxis_transform_set(0, axis, 1);
         md::NodeAxis_transform_calc(0, an_axis_node(stage), 1);
         md::NodeAxis_transform_set(0, an_axis_node(stage), 1);
         node_state state;
         if (md::node_state_get(stage.tree, state)) md::node_state_set(stage.tree, state);
         if (md::node_state_get(*stage.tree, state)) md::node_state_set(*stage.tree, state);
         k5axSgToolNodeMatrixSet(stage.loose, {1, 2, 3});
       }},
      {"MachineFields",
       {"k5axCMachDef_flags_get",
        "k5axCMachDef_flags_set",
        "k5axCMachDef_mode",
        "k5axCMachDef_type",
        "k5axCMachDef_discipline",
        "k5axCMachDef_head",
        "k5axCMachDef_head_const",
        "k5axCMachDef_axis",
        "k5axCMachDef_rotary_axis",
        "k5axCMachDef_rotary_axis_const",
        "k5axCMachDef_orthogonal",
        "k5axCMachDef_SG",
        "k5axCMachDef_Tool",
        "md::CMachDef::setPrimary",
        "md::CMachDef::setSecondary",
        "md::CMachDef::tool_node",
        "md::CMachDef::getToolDir",
        "md::CMachDef::is_orthogonal",
        "md::CMachDef::rotary_axis",
        "md::CMachDef::getMWRotAxes",
        "md::CMachDef::getAngle",
        "md::CMachDef::getABCAngles",
        "md::CMachDef::initialise_head",
        "md::CMachDef::copy"},
       [](AllocationStage& stage) {
         CMachDef& m = *stage.target;
         k5axCMachDef_flags_set(&m, k5axCMachDef_flags_get(&m));
         k5axCMachDef_mode(&m);
         k5axCMachDef_type(&m);
         k5axCMachDef_discipline(&m);
         k5axCMachDef_head(&m);
         k5axCMachDef_head_const(&m);
         k5axCMachDef_axis(0, &m);
         k5axCMachDef_axis(1, &m);
         k5axCMachDef_rotary_axis(&m);
         k5axCMachDef_rotary_axis_const(&m);
         k5axCMachDef_orthogonal(&m);
         k5axCMachDef_SG(&m, 0);
         k5axCMachDef_Tool(&m);
         AxisPtr first;
         AxisPtr second;
         m.getMWRotAxes(first, second);
         double a = m.getAngle(m.rotary_axis(), 1, 2, 3);
         m.getABCAngles(first, 1, a, a, a);
         m.copy(stage.source);
         m.initialise_head();
         m.getToolDir();
         m.tool_node({});
         m.setPrimary({});
         m.setSecondary({});
       }},
      {"Transforms",
       {"md::CMachDef::orientate", "k5axCMachDef_orientate", "md::CMachDef::IsToolRadial",
        "md::CMachDef::IsToolAxial", "md::CMachDef::Mach2PartTransform", "md::CMachDef::Mach2PartCoords",
        "md::CMachDef::Part2MachTransform", "md::CMachDef::Part2MachCoords", "md::CMachDef::Tool2CtrlPt"},
       [](AllocationStage& stage) {
         CMachDef& m = *stage.target;
         m.IsToolRadial(1, 2, 3);
         m.IsToolAxial(1, 2, 3);
         Point p;
         Point d_tool;
         Geometry::Matrix primary;
         Geometry::Matrix secondary;
         m.Mach2PartTransform(p, {1, 2, 3}, primary, secondary);
         m.Mach2PartTransform(p, {1, 2, 3});
         m.Mach2PartCoords({1, 2, 3}, {1, 2, 3}, p, d_tool);
         m.Part2MachTransform({1, 2, 3});
         m.Part2MachCoords(p, {1, 2, 3});
         m.Tool2CtrlPt(p, {1, 2, 3});
         k5axCMachDef_orientate(&m, 1, 2);
       }},
      {"Poses",
       {"UpdateNodeAxes_2", "k5axCMachDef_MachCoords2SG", "k5axCMachDef_SG2MachCoords", "md::UpdateNodeAxes_",
        "md::CMachDef_MachCoords2SG", "md::CMachDef_SG2MachCoords", "CMachDef_ToolNode_matrix_Set",
        "CMachDef_ToolNode_matrix_SetXYZ"},
       [](AllocationStage& stage) {
         CMachDef& m = *stage.target;
         double v[6] = {1, 2, 3, 4, 5, 6};
         Point xyz;
         Point abc;
         UpdateNodeAxes_2(&m, 1, 2, 3, 4, 5, 6);
         k5axCMachDef_MachCoords2SG(&m, v);
         k5axCMachDef_SG2MachCoords(&m, v);
         md::CMachDef_SG2MachCoords(m, xyz, abc);
         md::CMachDef_MachCoords2SG(m, xyz, abc);
         CMachDef_ToolNode_matrix_Set(&m, xyz);
         CMachDef_ToolNode_matrix_SetXYZ(&m, 1, 2, 3);
       }},
      {"Geometry",
       {"Geometry::FindNearestPointOnLine", "Geometry::NearestPointOnLine", "Geometry::RotateAboutAxis",
        "Geometry::Translate", "Geometry::operator*", "Geometry::Matrix::TransformDirection",
        "Geometry::Matrix::operator*=", "Geometry::Plane::Plane", "Geometry::Plane::Intersect",
        "Geometry::Plane::PointLiesInPlane"},
       [](AllocationStage&) {
         Geometry::Matrix m = Geometry::RotateAboutAxis(1, 2, 3, 4) * Geometry::Translate({1, 2, 3});
         m *= Geometry::RotateAboutAxis({1, 2, 3}, 4);
         Point p = m.TransformDirection({1, 2, 3}) * m;
         p = Geometry::NearestPointOnLine(p, {1, 2, 3}, Geometry::FindNearestPointOnLine(p, p, {4, 5, 6}));
         const Geometry::Plane plane({0, 0, 1}, p);
         plane.Intersect({0, 0, 0}, {0, 0, 1}, p);
         plane.PointLiesInPlane(p);
       }},
      {"OpenStreams",
       {"IIO::FileStream::Mode", "IIO::FileStream::Write", "IIO::FileStream::Read", "IIO::Stream::operator<<",
        "IIO::Stream::operator>>", "IIO::Stream::~Stream", "IIO::FileStream::~FileStream",
        "IIO::FileError::~FileError", "md::IMachDefVisitor::~IMachDefVisitor"},
       [](AllocationStage& stage) {
         // Opening asks for memory, and is an entry point of its own.
         MemoryShortage::end();
         IIO::FileStream in(stage.file(), IIO::FILE_READ);
         IIO::FileStream out("/dev/null", IIO::FILE_WRITE);
         const MemoryShortage shortage(0, MemoryShortage::kLasting);
         int whole = 0;
         unsigned int word = 0;
         double number = 0;
         in >> whole >> word >> number;
         out << whole << word << number;
         in.Read(&number, sizeof number);
         out.Write(&number, sizeof number);
         in.Mode();
       }},
  };
}

}  // namespace k5ax_test
