#include "MetricFamilies.h"

#include <cstddef>

namespace workbench {

MetricFamily const& FamilyOf(Metric metric) {
    return MetricFamilies()[static_cast<std::size_t>(metric)];
}

std::vector<MetricFamily> const& MetricFamilies() {
    static std::vector<MetricFamily> const families = {
        {"dorvel_build_info", false, "version", "Version of the workbench; always 1."},
        {"dorvel_run_info", false, "project", "Project of the run; always 1."},
        {"dorvel_run_start_time_seconds", false, "", "When the run began, in seconds since 1970 UTC."},
        {"dorvel_variable_value", false, "block, variable, object, property, unit",
         "Value of a number, a state or a boolean (0 or 1); left out while its quality is bad."},
        {"dorvel_variable_quality", false, "block, variable",
         "Quality of a value: 2 good, 1 uncertain, 0 bad or none yet; bad too while its block is in fault."},
        {"dorvel_variable_suspect", false, "block, variable",
         "1 while the value comes from an error of the device, else 0."},
        {"dorvel_block_info", false, "block, address, task", "Address and task of a block; always 1."},
        {"dorvel_block_up", false, "block",
         "1 if the latest cycle of the block has polled without a fault, else 0."},
        {"dorvel_block_fault", false, "block", "1 while the block is in fault, else 0."},
        {"dorvel_block_standby", false, "block", "1 while the block is not polled on standby, else 0."},
        {"dorvel_block_last_cycle_time_seconds", false, "block",
         "When the latest cycle of the block ended, in seconds since 1970 UTC."},
        {"dorvel_block_cycles_total", true, "block", "Cycles of the block."},
        {"dorvel_block_fault_cycles_total", true, "block", "Cycles of the block that ended in fault."},
        {"dorvel_block_cycle_last_seconds", false, "block", "How long the latest cycle took."},
        {"dorvel_block_cycle_median_seconds", false, "block", "Median of the latest 128 cycles."},
        {"dorvel_block_cycle_maximum_seconds", false, "block", "The longest cycle of the run."},
        {"dorvel_block_causes", false, "block, cause",
         "How often the latest cycle has seen a cause of the state of the block; left out for other causes."},
        {"dorvel_block_writes", false, "block, state",
         "Variables of the block whose latest write is in that state."},
        {"dorvel_block_write_results_total", true, "block, state", "Writes that came to that state."},
        {"dorvel_task_period_seconds", false, "task", "Period of the task."},
        {"dorvel_task_overruns_total", true, "task",
         "How often all blocks of the task together took longer than its period."},
        {"dorvel_datagrams_sent_total", true, "", "Datagrams sent to devices."},
        {"dorvel_datagrams_received_total", true, "", "Datagrams received from devices."},
        {"dorvel_round_trips_total", true, "",
         "Datagrams that were answered while the driver waited for it."},
        {"dorvel_round_trip_last_seconds", false, "", "The latest round trip."},
        {"dorvel_round_trip_median_seconds", false, "", "Median of the latest 4096 round trips."},
        {"dorvel_round_trip_maximum_seconds", false, "", "The longest round trip of the run."},
        {"dorvel_outlet_up", false, "outlet", "1 while the outlet works, else 0."},
        {"dorvel_outlet_state", false, "outlet, state",
         "1 for the state of the outlet, 0 for the others: starting, good, waiting, failed."},
        {"dorvel_outlet_state_time_seconds", false, "outlet",
         "Since when the outlet has its state, in seconds since 1970 UTC."},
        {"dorvel_outlet_figures_total", true, "outlet, figure", "Figures of the outlet, such as messages."},
    };
    return families;
}

}  // namespace workbench
