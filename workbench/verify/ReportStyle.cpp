#include "ReportPage.h"

namespace workbench {

char const* ReportStyle() {
    return R"(
:root { --ink: #1c2530; --soft: #5b6875; --line: #d5dce3; --wash: #f4f6f8; --good: #1f7a4d; --good-wash: #e6f4ec;
  --bad: #b3261e; --bad-wash: #fcebe9; --note: #8a5a00; --note-wash: #fdf3dd; --move: #1d5fa8; --move-wash: #e7f0fa; }
* { box-sizing: border-box; }
html { -webkit-text-size-adjust: 100%; }
body { margin: 0; color: var(--ink); background: #e9edf1; font: 14px/1.45 "Segoe UI", "Helvetica Neue", Helvetica,
  Arial, "Liberation Sans", sans-serif; font-variant-numeric: tabular-nums; }
main { max-width: 1180px; margin: 24px auto; padding: 40px 48px; background: #fff; border-radius: 6px;
  box-shadow: 0 1px 3px rgba(28, 37, 48, .18); }
.kicker { margin: 0; color: var(--soft); font-size: 12px; letter-spacing: .09em; text-transform: uppercase; }
h1 { margin: 2px 0 0; font-size: 28px; line-height: 1.2; font-weight: 600; overflow-wrap: anywhere; }
h2 { margin: 36px 0 10px; padding-bottom: 6px; border-bottom: 2px solid var(--ink); font-size: 18px; font-weight: 600; }
h3 { margin: 26px 0 2px; font-size: 15px; font-weight: 600; overflow-wrap: anywhere; }
.head { display: flex; flex-wrap: wrap; gap: 16px; align-items: flex-start; justify-content: space-between; }
.head > div { flex: 1 1 320px; min-width: 0; }
.result { padding: 10px 18px; border-radius: 6px; font-size: 17px; font-weight: 600; text-align: center; }
.result small { display: block; font-size: 12px; font-weight: 400; }
.result.good { color: var(--good); background: var(--good-wash); border: 1px solid var(--good); }
.result.bad { color: var(--bad); background: var(--bad-wash); border: 1px solid var(--bad); }
dl { display: grid; grid-template-columns: max-content 1fr; gap: 3px 20px; margin: 20px 0 0; }
dt { color: var(--soft); }
dd { margin: 0; overflow-wrap: anywhere; }
.figures { display: flex; flex-wrap: wrap; gap: 10px; margin: 24px 0 0; padding: 0; list-style: none; }
.figures li { flex: 1 1 110px; padding: 10px 14px; background: var(--wash); border-radius: 6px; border-left: 4px solid var(--line); }
.figures b { display: block; font-size: 22px; line-height: 1.2; }
.figures .good { border-left-color: var(--good); }
.figures .bad { border-left-color: var(--bad); }
.figures .move { border-left-color: var(--move); }
.figures .note { border-left-color: #d19a2a; }
.identity { margin: 0 0 8px; color: var(--soft); overflow-wrap: anywhere; }
.notes { margin: 0 0 10px; padding: 0; list-style: none; }
.notes li { margin: 0 0 4px; padding: 5px 10px; background: var(--note-wash); border-left: 4px solid #d19a2a; border-radius: 3px; }
.notes li.bad { background: var(--bad-wash); border-left-color: var(--bad); }
table { width: 100%; border-collapse: collapse; table-layout: fixed; font-size: 13px; }
th { padding: 6px 8px; color: var(--soft); background: var(--wash); border-bottom: 1px solid var(--line); font-size: 11px;
  font-weight: 600; letter-spacing: .03em; text-align: left; text-transform: uppercase; vertical-align: bottom; }
td { padding: 6px 8px; border-bottom: 1px solid var(--line); vertical-align: top; overflow-wrap: anywhere; unicode-bidi: isolate; }
td small, td .why { display: block; color: var(--soft); font-size: 12px; }
td.value { font-weight: 600; }
tr.bad td { background: var(--bad-wash); }
tr.bad td:first-child { box-shadow: inset 4px 0 0 var(--bad); }
tr.bad td .why { color: var(--ink); }
.badge { display: inline-block; padding: 1px 8px; border-radius: 10px; font-size: 12px; font-weight: 600; }
.badge.good { color: var(--good); background: var(--good-wash); }
.badge.move { color: var(--move); background: var(--move-wash); }
.badge.bad { color: #fff; background: var(--bad); }
.badge.note { color: var(--note); background: var(--note-wash); }
.fine { padding: 12px 16px; color: var(--good); background: var(--good-wash); border-radius: 6px; font-weight: 600; }
.legend td:first-child { width: 210px; }
.sign { display: grid; grid-template-columns: repeat(3, 1fr); gap: 28px 36px; margin-top: 56px; }
.sign div { padding-top: 6px; border-top: 1px solid var(--ink); color: var(--soft); font-size: 12px; }
footer { margin-top: 36px; padding-top: 10px; border-top: 1px solid var(--line); color: var(--soft); font-size: 12px; }
@media screen and (max-width: 760px) {
  body { background: #fff; }
  main { margin: 0; padding: 20px 16px; border-radius: 0; box-shadow: none; }
  h1 { font-size: 23px; }
  .sign { grid-template-columns: 1fr; gap: 52px; }
  .wide thead { display: none; }
  .wide, .wide tbody, .wide tr, .wide td { display: block; width: auto; }
  .wide tr { padding: 8px 0; border-bottom: 1px solid var(--line); }
  .wide tr.bad { padding-left: 10px; border-left: 4px solid var(--bad); background: var(--bad-wash); }
  .wide td { display: grid; grid-template-columns: 100px 1fr; gap: 10px; padding: 2px 0; border: 0; }
  .wide tr.bad td:first-child { box-shadow: none; }
  .wide td::before { content: attr(data-label); color: var(--soft); font-weight: 400; }
  .wide td.empty { display: none; }
  dl { grid-template-columns: 1fr; gap: 0; }
  dd { margin-bottom: 6px; }
}
@media print {
  @page { size: A4; margin: 14mm 12mm 16mm; @bottom-right { content: counter(page) " / " counter(pages); font-size: 8pt; } }
  body { background: #fff; font-size: 9.5pt; -webkit-print-color-adjust: exact; print-color-adjust: exact; }
  main { max-width: none; margin: 0; padding: 0; border-radius: 0; box-shadow: none; }
  h1 { font-size: 19pt; }
  h2 { margin-top: 20pt; font-size: 12.5pt; }
  table { font-size: 8.2pt; }
  thead { display: table-header-group; }
  th { font-size: 7.2pt; }
  td, th { padding: 3pt 5pt; }
  td small, td .why, .badge { font-size: 7.6pt; }
  tr, .figures li, .notes li, .result { break-inside: avoid; }
  h2, h3, .identity, .notes { break-after: avoid; }
  .points { break-before: page; }
  .legend, .closing { break-inside: avoid; }
  .sign { margin-top: 44pt; }
}
)";
}

}  // namespace workbench
