#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "Outlet.h"
#include "OutletParts.h"
#include "OutletStatus.h"
#include "RecordHistory.h"
#include "Recorder.h"

namespace workbench {

// The recording of a run, with one thread that writes once a second.
class RecordOutlet : public Outlet {
public:
    // Opens the file. RecordMistake if that is not possible.
    RecordOutlet(std::string const& path, RecordLimits const& limits, OutletParts const& parts);
    RecordOutlet(RecordOutlet const&) = delete;
    RecordOutlet& operator=(RecordOutlet const&) = delete;
    ~RecordOutlet() override;

    void Start() override;
    void Follow(SharedSnapshot const& block) override { recorder.Queue().Add(block); }
    void End() override;
    OutletState State() const override { return status.State(); }
    History const* Trends() const override { return &history; }

private:
    void Run();
    void StopThread();

    OutletStatus status;
    Recorder recorder;
    RecordHistory history;
    std::mutex mutex;
    std::condition_variable stopping;
    bool isStopping = false;
    std::thread thread;
};

}  // namespace workbench
