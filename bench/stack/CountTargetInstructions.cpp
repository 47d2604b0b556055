// A TCG plugin of qemu-arm (version 1 of the interface) that counts the instructions of the emulated program
// between those that toggle it (Counting.h), and prints their number at the end:
//
//     qemu-arm -plugin count-target-instructions.so PROGRAM
//
// qemu's packages lack the header of the interface, so the few functions that are used are declared here.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

extern "C" {

using qemu_plugin_id_t = std::uint64_t;
struct qemu_plugin_tb;
struct qemu_plugin_insn;

std::size_t qemu_plugin_tb_n_insns(qemu_plugin_tb const* block);
qemu_plugin_insn* qemu_plugin_tb_get_insn(qemu_plugin_tb const* block, std::size_t index);
void const* qemu_plugin_insn_data(qemu_plugin_insn const* instruction);
std::size_t qemu_plugin_insn_size(qemu_plugin_insn const* instruction);
void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id,
                                           void (*translated)(qemu_plugin_id_t, qemu_plugin_tb*));
void qemu_plugin_register_vcpu_insn_exec_cb(qemu_plugin_insn* instruction, void (*executed)(unsigned, void*),
                                            int registers, void* data);
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t id, void (*ended)(qemu_plugin_id_t, void*), void* data);

}  // extern "C"

namespace {

constexpr int NoRegisters = 0;

unsigned long long counted = 0;
bool isCounting = false;

void Count(unsigned, void*) {
    counted += isCounting ? 1 : 0;
}

void Toggle(unsigned, void*) {
    isCounting = !isCounting;
}

// nop.w {85} of Thumb and nop {85} of ARM, in the order of their octets in memory.
bool IsToggle(qemu_plugin_insn const* instruction) {
    constexpr unsigned char thumb[] = {0xAF, 0xF3, 0x55, 0x80};
    constexpr unsigned char arm[] = {0x55, 0xF0, 0x20, 0xE3};
    void const* const octets = qemu_plugin_insn_data(instruction);
    return qemu_plugin_insn_size(instruction) == sizeof thumb &&
           (std::memcmp(octets, thumb, sizeof thumb) == 0 || std::memcmp(octets, arm, sizeof arm) == 0);
}

void Watch(qemu_plugin_id_t, qemu_plugin_tb* block) {
    for (std::size_t index = 0; index < qemu_plugin_tb_n_insns(block); ++index) {
        qemu_plugin_insn* const instruction = qemu_plugin_tb_get_insn(block, index);
        qemu_plugin_register_vcpu_insn_exec_cb(instruction, IsToggle(instruction) ? Toggle : Count,
                                               NoRegisters, nullptr);
    }
}

// In callgrind's wording, so that the same expression finds both.
void Print(qemu_plugin_id_t, void*) {
    std::fprintf(stderr, "Collected : %llu\n", counted);
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) extern int const qemu_plugin_version;
int const qemu_plugin_version = 1;

__attribute__((visibility("default"))) int qemu_plugin_install(qemu_plugin_id_t id, void const* /*machine*/,
                                                               int /*count*/, char** /*arguments*/) {
    qemu_plugin_register_vcpu_tb_trans_cb(id, Watch);
    qemu_plugin_register_atexit_cb(id, Print, nullptr);
    return 0;
}

}  // extern "C"
