#include "version_levels_table.h"

#include <array>
#include <iterator>
#include <string_view>

namespace nmk_runtime {
namespace {

// Columns: name; previous, default, preview; prerelease (1: of interest only before a release); the
// description for the operator.
// clang-format off
constexpr VersionLevelRow rows[] = {
    {"FlatApproachAlgorithm",                             0,  1, -1, 0, "Previous: by offset. Default: VD-based. Preview: none"},
    {"SafetyNetTolerance",                               -1,  0,  1, 0, "Increase safety net tolerance"},
    {"ac_flat_boundary_cc",                              -1,  0,  1, 0, "Cutter compensation on flat boundaries of area clearance"},
    {"aca_curve_fit_azimuth",                            -1,  0,  1, 0, "Fit curves to the azimuth in automatic collision avoidance"},
    {"adaptive_level_marker_syncing",                     0,  1, -1, 0, "Keep the level markers of adaptive clearance in step"},
    {"adaptive_thin_channel_marker_fixing",               0,  1,  2, 0, "Correct the markers of thin channels in adaptive clearance"},
    {"adaptive_trochoid_free_spiralling",                 0,  1,  2, 0, "Spiral in adaptive clearance where no trochoids are needed"},
    {"allow_gouge",                                      -1,  0,  1, 0, "Allow gouges for vertical axis with no auto collision check. (Default is Disallow.)"},
    {"alternate_raster_angle",                           -1,  0,  1, 0, "Alternate the raster angle from one level to the next"},
    {"always_auto_save",                                 -1,  0,  1, 0, ""},
    {"append_check_tool",                                -1,  1,  0, 0, "Append tp tool checking"},
    {"approach_outside_as_leadins",                       0,  1, -1, 0, "Treat approaches from outside as lead-ins"},
    {"arcfit_and_normals",                               -1,  0,  1, 0, "Fit arcs to toolpaths that carry contact normals"},
    {"areaclear_distribution",                           -1,  0,  1, 0, "Point distribution of area clearance toolpaths"},
    {"areaclear_drilling_toolpath_creation",              1,  0, -1, 0, "Create drilling toolpaths for the plunges of area clearance"},
    {"areaclear_output_leadslinks",                      -1,  0,  1, 0, "Output area clearance leads and links apart from the cutting moves"},
    {"areaclear_separate_profile",                       -1,  0,  1, 0, "Keep the profile passes of area clearance apart from the clearing passes"},
    {"automatically_extend_leads",                        0,  1, -1, 0, "Extend leads automatically"},
    {"avoid_raster_join_moves",                          -1,  0,  1, 0, "Avoid joining moves between raster passes"},
    {"axis_angles",                                      -1,  0,  1, 0, "Store tool axes as angles"},
    {"axisreorientsmoothing",                             0,  1, -1, 0, "Smooth the reorientation of the tool axis"},
    {"azel_redistribution",                               2,  0,  1, 0, "Use azimuth/elevation 5-axis point redistribution : previous - never use it; default - use when appropriate; preview - always use it"},
    {"batch_process_cutworks_adaptive_slices",           -1,  0,  1, 0, "Batch process adaptiveclearance slices. Default: Batch process slices.  Preview: Send all our slices to camkernel"},
    {"blade_default_tool_axis_smoothing_unknown_setup",  -1, -1,  1, 0, "blade default tool axis smoothing in unknown set-ups (previous/default = smooth both on model, preview = smooth both off model and reproject)"},
    {"boundary_cc",                                      -1,  0,  1, 0, "Cutter compensation on boundaries"},
    {"boundary_multiscan",                               -1,  0,  1, 0, "Scan boundaries in several passes"},
    {"c_axis_control_version_1",                         -1,  0,  1, 0, "Control of the C axis, version 1"},
    {"c_axis_control_version_2",                         -1,  0,  1, 0, "Control of the C axis, version 2"},
    {"check_additive_feature_extents",                    0,  1, -1, 0, "Check additive featues don't extend beyond the base (default = 'on', previous='off'"},
    {"check_tp_geometric_id",                            -1,  0,  1, 0, "Check the geometric identifiers of toolpaths"},
    {"check_tp_start_end",                                0,  1, -1, 0, "Check the start and end points of toolpaths"},
    {"collision_avoidance",                               0,  1, -1, 0, "Use old or new collision avoidance. (Default is new.)"},
    {"composite_append",                                 -1,  0,  1, 0, "Append to composite curves"},
    {"connections_between_toolpaths",                     0,  1, -1, 0, "Calculate the connections between toolpaths"},
    {"constz_cusp_step",                                  0,  1, -1, 0, "Constant-Z step-down from the cusp height"},
    {"corner_constz_angle",                               0,  1, -1, 0, "Threshold angle of constant-Z corner finishing"},
    {"corner_correct_3doffset",                          -1, -1,  0, 0, "Preview method for corner correction for 3D offset"},
    {"corner_feature_criteria",                           0,  1, -1, 0, "Criteria by which corner features are recognised"},
    {"corner_roughscan_multithreading",                   0,  1, -1, 0, "Use several threads for the rough scan of corners"},
    {"curvature_boundary",                               -1,  0,  1, 0, "Boundaries from surface curvature"},
    {"curvature_smooth",                                  0,  1,  2, 0, "spline fit or further smooth toolpath: previous - do nothing; default - spline fit only; preview - further g2 smooth."},
    {"cusp_removal",                                      0,  1, -1, 0, "Default level removes cusps using tails, previous level uses closed loops"},
    {"cutfile",                                           1, -1,  0, 0, "cutfile"},
    {"cylinder_sort",                                     1, -1,  0, 0, "Sort the passes of a cylinder"},
    {"defrag_pencil_trace",                               0,  1,  2, 0, "Join the fragments of pencil traces"},
    {"delete_slices_cache",                               0,  1, -1, 0, "Discards area clearance caches for fast recalculation if running out of memory."},
    {"disconnect_pencil_trace",                          -1,  0,  1, 0, "Break pencil traces where they are only loosely connected"},
    {"dispentnames",                                     -1,  0,  1, 0, "Display the names of entities"},
    {"domed_flatend_tools",                               0,  1,  2, 0, "Support flat-ended tools with a dome"},
    {"draw_dynamic_colours",                              0,  1,  2, 0, "Draw with colours that follow the view"},
    {"drilling_holes",                                   -1,  0,  1, 0, "Hole recognition for drilling"},
    {"dropped_stitch_clipping",                           0,  1, -1, 0, "Clip stitches after they are dropped on to the model"},
    {"dynamic_glancemill",                                0,  1,  2, 0, "Recalculate glance milling as its inputs change"},
    {"echo",                                              1,  0, -1, 0, "set to preview to stop preview echo."},
    {"embedding_method",                                 -1,  1,  0, 0, "What embedding algorithm to use"},
    {"export_stockmodel_triangulation",                   0,  1, -1, 0, "Export the triangulation of a stock model"},
    {"feature_groups",                                    0,  1, -1, 0, "Enable the creation of Feature Group entities in BrackMILL.  Previous: Use Feature Sets.  Default: Use Feature Groups."},
    {"first_offset",                                      0,  1, -1, 0, "How the first offset of an area is made"},
    {"flat_boundary_cc",                                  0,  1, -1, 0, "Cutter compensation on the boundaries of flats"},
    {"flats_generation",                                 -1,  0,  1, 0, "Generation of flat areas"},
    {"flowline",                                          0,  1, -1, 0, "Flowline machining algorithm"},
    {"flowline_reverse_selection",                       -1,  0,  1, 0, "Allow a reversed selection of flowline curves"},
    {"full_proj_pars",                                   -1,  0,  1, 0, ""},
    {"glancemill_polygonizer",                            0,  1,  2, 0, "How glance milling turns curves into polygons"},
    {"glancemill_refresh",                                0,  1,  2, 0, "When glance milling refreshes its picture"},
    {"gridded_spun_profile_tracer",                       0,  1, -1, 0, "Trace spun profiles on a grid"},
    {"holetagging",                                      -1,  0,  1, 1, "Enable hole tagging (default = 'off', preview = 'on')."},
    {"ifd_filter",                                       -1,  0,  1, 0, "Filter for in-process feature detection"},
    {"ifd_incremental",                                  -1,  0,  1, 0, "Incremental in-process feature detection"},
    {"increase_reference_tool",                           0,  1, -1, 0, "Enlarge the reference tool of rest machining a little"},
    {"itemsorter",                                        0,  1, -1, 0, "Point ordering algorithm"},
    {"keep_contact",                                     -1,  0,  1, 0, "Keep the tool in contact with the surface"},
    {"layer_boundary_calculation",                        0,  1, -1, 0, "Calculation of the boundaries of layers"},
    {"lead_parameter_feeds",                             -1,  0,  1, 0, "Feed rates taken from the parameters of the leads"},
    {"lead_smoothing",                                   -1,  0,  1, 0, "Smooth leads"},
    {"leadslinks_orientation_vectors",                   -1,  0,  1, 0, "Orientation vectors on leads and links"},
    {"leaned_5axis_toolpath",                             1,  0, -1, 0, "Enables leaned 5-axis toolpaths behaviour"},
    {"links_add_points",                                  0,  1, -1, 0, "Add points to long links"},
    {"links_interpolate_midpoint",                        0,  1, -1, 0, "Interpolate the tool axis at the middle of a link"},
    {"links_stock_check",                                 0,  1, -1, 0, "Check links against the stock"},
    {"machine_print",                                     1,  0, -1, 0, "Enable (PREVIOUS) or disable (DEFAULT) MachinePrint in BrackMILL."},
    {"material_colours",                                  0,  1, -1, 0, "Colours by material"},
    {"minitoolpath",                                     -1,  0,  1, 0, ""},
    {"molarmill_template_project",                       -1,  0,  1, 0, ""},
    {"multipencil_offset_width",                         -1,  0,  1, 0, "Width of the offsets in multiple pencil machining"},
    {"multiraster",                                      -1,  0,  1, 0, "Several raster angles in one toolpath"},
    {"multithread_leadslinks",                            0,  1, -1, 0, "Use several threads for leads and links"},
    {"multithread_machining",                             0,  1, -1, 0, "Use several threads for machining calculations"},
    {"negative_draft_drilling",                          -1,  0,  1, 0, "Drilling of holes with negative draft"},
    {"new_limiting",                                      0,  1, -1, 0, "Limiting algorithm"},
    {"no_tol",                                           -1,  0,  1, 0, "forces a constant space between points regardless of tolerance with redistribute filter method | don't use this unless you REALLY know what you are doing."},
    {"offset3dUtils",                                     0,  1,  2, 0, "Preview method may remove some zig-zags but is much slower, previous is less accurate on small parts and quicker."},
    {"ovec_leads_links",                                  0,  1, -1, 0, "Orientation vectors in the calculation of leads and links"},
    {"overhang_stock_remove",                            -1,  0,  1, 0, "Remove stock under overhangs"},
    {"patch_removal",                                    -1,  1,  0, 0, "Remove surface patches outside of trimming"},
    {"pencil_use_contact_info",                           0,  1, -1, 0, "Use contact information in pencil machining"},
    {"plunge_detection",                                 -1,  0,  1, 0, "Detection of plunging moves"},
    {"positive_sausage_offset",                          -1,  0,  1, 0, "Offset outwards in sausage-shaped areas"},
    {"prerelease_dummy",                                 -1,  0,  1, 1, "Enable dummy prerelease level."},
    {"processes",                                        -1,  0,  1, 0, "Run calculations in separate processes"},
    {"progressive_noncutting_feedrate",                   0,  1, -1, 0, "Raise the feed rate of non-cutting moves progressively"},
    {"proj_plane_around",                                -1,  0,  1, 0, "Plane projection that goes around the part"},
    {"proj_plane_around_bottom",                         -1,  0,  1, 0, "Plane projection that goes around the bottom of the part"},
    {"proj_plane_around_circular",                       -1,  0,  1, 0, "Plane projection that goes around the part in circles"},
    {"project_air_cuts",                                 -1,  0,  1, 0, "Project moves that cut only air"},
    {"project_ball",                                     -1,  0,  1, 0, "Project with a ball in place of the tool"},
    {"projectlocking",                                    0,  1, -1, 0, "Lock projects that are open"},
    {"projectsaving",                                     0,  1, -1, 0, "How projects are saved"},
    {"propagate_changes",                                -1,  0,  1, 1, "Enable propagating 'soft' modifications (default = 'off', preview = 'on')."},
    {"quality_measure",                                  -1,  0,  1, 0, "Measure the quality of toolpaths"},
    {"query_unlock",                                      0,  1, -1, 0, ""},
    {"ramp_area_filtering",                              -1,  0,  1, 0, "Filter out areas too small to ramp into"},
    {"raster_grouped",                                   -1,  0,  1, 0, "Group raster passes by area"},
    {"raster_start_corner",                              -1,  0,  1, 0, "Corner at which raster passes start"},
    {"raster_twoway_joined",                              1,  0, -1, 0, "Join two-way raster passes"},
    {"read_contact_normals",                             -1,  0,  1, 0, "Read contact normals from toolpaths"},
    {"remove_small_corners",                              0,  1,  2, 0, "Remove corners that are too small for the tool"},
    {"remove_small_roughing_arcs",                        0,  1, -1, 0, "Remove small arcs from roughing toolpaths"},
    {"rest_boundary",                                     1,  0, -1, 0, "Enable rest boundary algorithm to consider block bottom as a plane"},
    {"rest_finishing_boundary_normals",                  -1,  0,  1, 0, "Normals on the boundaries of rest finishing"},
    {"rest_finishing_stockmodel",                        -1,  0,  1, 0, "Rest finishing from a stock model"},
    {"rest_roughing_cutter_comp",                        -1,  0,  1, 0, "Cutter compensation in rest roughing"},
    {"restricted_five_axis_limiting",                    -1,  0,  1, 0, "Limiting by the restricted range of a five-axis machine"},
    {"retain_expressions",                                0,  1, -1, 0, "Keep expressions with the values that they gave"},
    {"reverse_helical",                                  -1, -1,  0, 0, "reverse_helical"},
    {"rib_dip_remover",                                   1,  2,  3, 0, "Controls the dip remover.  Previous: No dip removal.  Default: Use the comprehensive dip remover.  Preview: Use the endmill dip remover."},
    {"rib_joining",                                       0,  1,  2, 0, "Rib Joining (previous = 'no joining', default = 'Rib joining on', )"},
    {"rib_uphill_limit",                                 -1,  0,  1, 0, "Limit of the uphill angle in rib machining"},
    {"rib_z_smoothing",                                   0,  1,  2, 0, "Experimental, constrained, z-smoothing filter.  Previous: No smooting.  Default: No smooting.  Preview: Smoothing."},
    {"rollaround_resolver",                              -1,  0,  1, 0, "How the tool rolls around sharp edges"},
    {"rotary_links",                                     -1,  0,  1, 0, "Links that turn a rotary axis"},
    {"s_shape_links",                                     0,  1, -1, 0, "Links in the shape of an S"},
    {"savehistory",                                       0,  1, -1, 0, "Save the history of a project"},
    {"savetphistory",                                     0,  1, -1, 0, "Save the history of toolpaths"},
    {"separate_azimuth_elevation_smoothing",             -1,  0,  1, 0, "Smooth azimuth and elevation separately"},
    {"serialize_ndx",                                     0,  1, -1, 0, "serialize in NDX format"},
    {"setupsheet_strip_ext",                              0,  1, -1, 0, ""},
    {"shallow_boundary",                                  0,  1, -1, 0, "Shallow boundary algorithm"},
    {"shallow_boundary_cc",                              -1,  0,  1, 0, "Cutter compensation on shallow boundaries"},
    {"skim_link_maxz",                                    0,  1, -1, 0, "Greatest height of skimming links"},
    {"skip_gyre_checks",                                  1,  0,  2, 0, "Skip the small-arc and engagement checks on Gyre toolpaths.  Default: be safe, don't skip the tests.  Previous/Preview: skip the tests."},
    {"skip_stepover_checks",                              1,  0,  2, 0, "Skip stepover checks on additive toolpaths.Default: don't skip the tests.Previous/Preview: skip the tests."},
    {"slot_feature_gouge_removal",                        1,  2,  3, 0, "Controls feature gouge removal in Slot Machining.  Previous: No gouge removal.  Default: Remove gouges.  Preview: Remove gouges."},
    {"smooth_tool_engagement_toolpaths",                  1,  0, -1, 0, "Switch between smoothed and unsmoothed versions of tool engagment toolpaths"},
    {"snap_to_pole",                                     -1,  0,  1, 0, "Snap tool axes that are nearly upright to the pole"},
    {"sorter",                                            0,  1, -1, 0, "Sorting algorithm"},
    {"spiral",                                            0,  1, -1, 0, "Spiral machining algorithm"},
    {"spline",                                            0,  1, -1, 0, "Spline algorithm"},
    {"spline_wireframeswarf",                             0,  1, -1, 0, "Splines in wireframe swarf machining"},
    {"sponge_offsetter_tracing",                          0,  1, -1, 0, "Tracing method of the sponge offsetter"},
    {"spun_profile",                                     -1,  2,  0, 0, "default - Norvex surfaces, preview - Norvex triangles"},
    {"staggered_links",                                  -1,  0,  1, 0, "Stagger the links of neighbouring passes"},
    {"steep_region_cz",                                  -1,  0,  1, 0, "Constant-Z machining of steep regions"},
    {"steepshallow_constantz_limiting",                   0,  1, -1, 0, "Switch between 2D (DEFAULT) and 3D limiting (PREVIOUS) of constant-Z segments in Steep and Shallow Finishing"},
    {"stepcut",                                           0,  1, -1, 0, "Step cutting in roughing"},
    {"stitch_clipping",                                  -1,  0,  1, 0, "Clip stitches to the boundary"},
    {"stitch_fanning",                                    0,  1, -1, 0, "Fan stitches out at corners"},
    {"stitch_leads_links",                                1,  0,  2, 0, "Decide if stitch leads/links are to be output as lead/link or cutting moves"},
    {"stitch_smoothing",                                  0,  2,  1, 0, "Select stitch smoothing method to use:\n PREVIOUS = old smoother | DEFAULT  = strip smoother | PREVIEW  = Gaussian smoother"},
    {"stockmodel_shading",                                0,  1, -1, 0, "Shading of stock models"},
    {"stockmodel_with_undercut",                          0,  2, -1, 0, "Stock model with undercut (Previous=Off, Default=On)"},
    {"stop_on_adaptive_backward_span",                    0,  1, -1, 0, "Stop when a span of adaptive clearance runs backwards"},
    {"surface_normals",                                  -1,  0,  1, 0, "Use surface normals in place of triangle normals"},
    {"surface_projection",                                0,  1, -1, 0, "Surface projection algorithm"},
    {"surface_stepover",                                  0,  1, -1, 0, "Measure the stepover on the surface"},
    {"tails_arc_line_arc",                               -1,  1,  0, 0, "Default level uses a combination of biarc and arc-line-arc methods, preview level does not use biarc method"},
    {"tails_biarc",                                      -1,  1,  0, 0, "Default level uses a combination of biarc and arc-line-arc methods, preview level does not use arc-line-arc method"},
    {"threading_model",                                   0,  1, -1, 0, "BrackMILL Threading model"},
    {"through_curve_flip_direction",                     -1,  0,  1, 0, "Flip the direction of curves the tool axis passes through"},
    {"through_curve_normal",                             -1,  0,  1, 0, "Tool axis through a curve, along its normal"},
    {"through_curve_tangent",                            -1,  0,  1, 0, "Tool axis through a curve, along its tangent"},
    {"tilt_constant_azimuth",                             0,  1, -1, 0, "Keep the azimuth constant while the tool tilts"},
    {"tilt_constant_elevation",                           0,  1, -1, 0, "Keep the elevation constant while the tool tilts"},
    {"tilt_detect_straights",                             0,  1, -1, 0, "Detect straight stretches while the tool tilts"},
    {"tilt_proj_direction",                              -1,  0,  1, 0, "Direction of projection while the tool tilts"},
    {"timetag_debug_toolpaths",                          -1,  0,  1, 0, "Mark debug toolpaths with the time"},
    {"tool_axis_smoother",                                3,  0, -1, 0, "Smooth the tool axis"},
    {"tool_profile_origin",                               0,  1, -1, 0, "Origin of the tool profile"},
    {"toolpath_order",                                   -1,  0,  1, 0, "toolpath reorder method"},
    {"toolpathtype",                                      0,  1, -1, 0, ""},
    {"tri_block_slicer",                                  0,  1, -1, 0, "Slicer of triangle blocks"},
    {"triangle_flats",                                    0,  1, -1, 0, "Flats from triangles"},
    {"triangle_handle_self_intersection",                 0,  1,  2, 0, "Attempt to fix self-intersecting faces to improve robustness of triangulation (default = 'on', preview = 'on', previous = 'off')"},
    {"triangle_memory",                                   0,  1, -1, 0, "default limits the maximum amount of triangulation that can be stored in memory. With the previous version there is no limit"},
    {"triangle_refine",                                   0,  1, -1, 0, "Refinement of triangles"},
    {"trochoid_radius",                                   0,  1, -1, 0, "Radius of trochoids"},
    {"turning_arcs",                                      0,  1,  2, 0, "Smash arcs before calculating turning toolpath. Previous = smash arcs, Default = keep arcs, Preview = keep arcs."},
    {"turning_cldata",                                   -1,  0,  1, 0, "Cutter location data for turning"},
    {"turning_leadslinks",                                0,  1, -1, 0, "Switch between BrackMill (DEFAULT) FormaCam (PREVIOUS) leads and links"},
    {"unitshandling",                                     0,  1, -1, 0, "Handling of units"},
    {"use_annotation_reader",                             0,  1, -1, 0, "Read the annotations of models"},
    {"variable_offset",                                   0,  1, -1, 0, "Offsets of variable distance"},
    {"voronoi_compare",                                   0,  1,  3, 0, "Voronoi offsetting (previous = 'no comparison', default = 'no comparison', preview = 'compare polyarcline to voronoi areas')"},
    {"voronoi_offset",                                    0,  2,  3, 0, "Voronoi offsetting.  Previous: Use old offsetter.  Default: Use old offsetter.  Preview: Use Voronoi diagrams."},
    {"wall_loop_checker",                                -1,  0,  1, 0, "Check of the loops around walls"},
    {"zone_memory",                                       0,  1, -1, 0, "default includes the memory of the zones in the overall limit. With the previous version there is no limit on zone memory"},
};
// clang-format on

static_assert(std::size(rows) == 196);

// The host is a placeholder, to be replaced by that of the distributor of the library.
constexpr std::string_view link_base = "https://nmktoolbox.invalid/";
constexpr std::string_view link_folder = "nmk/doc/nmkVersion/";
constexpr std::string_view link_ending = ".htm";
constexpr std::size_t max_link_length = 127;

using Link = std::array<char, max_link_length + 1>;

// The link of one level, terminated by a nul. Evaluated at compile time, where a link that is too
// long is an error.
constexpr Link make_link(std::string_view name) {
    Link link{};
    std::size_t length = 0;
    for (const std::string_view part : {link_base, link_folder, name, link_ending}) {
        for (const char each : part) link.at(length++) = each;
    }
    link.at(length) = '\0';
    return link;
}

constexpr auto links = [] {
    std::array<Link, std::size(rows)> all{};
    for (std::size_t row = 0; row < all.size(); ++row) all[row] = make_link(rows[row].name);
    return all;
}();

}  // namespace

std::span<const VersionLevelRow> version_levels_table() { return rows; }

const char* version_level_link(std::size_t row) { return links[row].data(); }

}  // namespace nmk_runtime
