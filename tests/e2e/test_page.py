"""The page of the workbench in a real browser: each test plays one scenario of tests/page/scenarios."""

import json
import os
import re
import signal
import urllib.request

from browser import Scenarios
from programs import LONGEST, PLANT, ROOT, block, variable
from test_demo import Demo

# Cycles are short, so that no scenario waits long.
TASK = 'Task{Name = "fast", Period = 100}\n'

MARKUP = '<img src=/x.png onerror=alert(1)><b id=injected>bold</b>'

AHU = """device{name = "AHU-1", instance = 1001, objects = {
  analog_input{instance = 1, name = "Supply air", present_value = ramp{from = 18, to = 22, period = 10}, units = "degrees-celsius"},
  analog_input{instance = 2, name = "Return air", present_value = 21.5, units = "degrees-celsius", description = %s},
  analog_input{instance = 3, name = "Frost sensor", present_value = -50, reliability = "open-loop"},
  analog_value{instance = 1, name = "Setpoint", present_value = 20.5, relinquish_default = 20, min_pres_value = 10, max_pres_value = 35},
  multi_state_value{instance = 1, name = "Mode", present_value = 1, number_of_states = 3},
  schedule{instance = 1, name = "Programme", present_value = real(21.5), schedule_default = real(18),
    weekly_schedule = {monday = {{"06:00", real(21.5)}, {"20:00", real(17)}}, saturday = {{"08:00", real(19)}}},
    exception_schedule = {{date = "2026-12-25", priority = 10, entries = {{"00:00", real(16)}}},
                          {week_n_day = {month = 12, week = 6, day = 5}, priority = 12, entries = {{"06:00", real(24)}}}}},
}}""" % json.dumps(MARKUP)

CHILLER = """device{name = "Chiller", instance = 2001, objects = {
  analog_input{instance = 1, name = "Flow", present_value = 7.5, units = "degrees-celsius"},
  binary_value{instance = 1, name = "Release", present_value = "active"}}}"""


def celsius(text):
    return text.replace("{ Name", '{ Unit = "degrees-celsius", Name')


PROJECT = TASK + block("AHU", "@ahu", [
    celsius(variable("Supply air", "analog-input", 1)),
    celsius(variable("Return air", "analog-input", 2)),
    variable("Note", "analog-input", 2, declared="String", prop="description"),
    variable("Frost sensor", "analog-input", 3),
    celsius(variable("Setpoint", "analog-value", 1, write=True)),
    variable("Mode", "multi-state-value", 1, declared="UInt32", write=True).replace(
        "{ Name", '{ StateTexts = {"automatic", "manual", "maintenance"}, Name'),
    celsius(variable("Programme", "schedule", 1)),
    celsius(variable("Programme, week", "schedule", 1, declared="String", prop="weekly-schedule", write=True)),
    celsius(variable("Programme, exceptions", "schedule", 1, declared="String", prop="exception-schedule", write=True)),
], "Priority = 8,") + block("Chiller", "@chiller", [
    celsius(variable("Flow", "analog-input", 1)),
    variable("Release", "binary-value", 1, declared="Boolean"),
], "CountRepeat = 1,")


class Page(Scenarios):
    def start_plant(self, *options, **settings):
        project = PROJECT
        for name in ("ahu", "chiller"):
            project = project.replace(f'"@{name}"', f"Param.{name}")
        self.start(self.file("plant.lua", project), *options, devices=[
            ("ahu", self.file("ahu.lua", AHU)), ("chiller", self.file("chiller.lua", CHILLER))], **settings)

    def test_the_link_opens_the_overview(self):
        self.start_plant()
        self.play("overview.the_link_opens_it")

    def test_a_device_that_is_lost_is_explained(self):
        self.start_plant()
        self.play("overview.a_device_that_is_lost_is_explained")

    def test_the_end_of_the_program_is_said(self):
        self.start_plant()
        self.play("overview.the_end_of_the_program_is_said")

    def test_both_themes_can_be_chosen(self):
        self.start_plant()
        self.play("overview.both_themes_can_be_chosen")

    def test_a_search_a_filter_and_a_sort_choose_rows(self):
        self.start_plant()
        self.play("values.a_search_a_filter_and_a_sort_choose_rows")

    def test_a_value_that_moves_is_seen_to_move(self):
        self.start_plant()
        self.play("values.a_value_that_moves_is_seen_to_move")

    def test_a_state_and_a_bad_quality_are_words(self):
        self.start_plant()
        self.play("values.a_state_and_a_bad_quality_are_words")

    def test_a_text_of_a_device_is_never_markup(self):
        self.start_plant()
        self.play("values.a_text_of_a_device_is_never_markup")

    def test_ten_thousand_rows_scroll(self):
        objects = "".join(f'analog_input{{instance = {i}, name = "T{i}", present_value = {i}}},' for i in range(1, 10001))
        blocks = "".join(block(f"B{n}", "@many", [variable(f"T{i}", "analog-input", i) for i in range(n * 500 + 1, n * 500 + 501)])
                         for n in range(20))
        project = TASK.replace("100", "5000") + blocks.replace('"@many"', "Param.many")
        self.start(self.file("plant.lua", project), devices=[
            ("many", self.file("many.lua", f'device{{name = "Many", instance = 1, objects = {{{objects}}}}}'))])
        self.play("values.ten_thousand_rows_scroll")

    def test_a_value_arrives_in_the_device(self):
        self.start_plant()
        self.play("writes.a_value_arrives_in_the_device")

    def test_a_state_is_set_by_its_name(self):
        self.start_plant()
        self.play("writes.a_state_is_set_by_its_name")

    def test_a_refusal_has_its_reason(self):
        self.start_plant()
        self.play("writes.a_refusal_has_its_reason")

    def test_a_value_that_is_not_one_is_not_written(self):
        self.start_plant()
        self.play("writes.a_value_that_is_not_one_is_not_written")

    def test_a_question_that_is_cancelled_writes_nothing(self):
        self.start_plant()
        self.play("writes.a_question_that_is_cancelled_writes_nothing")

    def test_read_only_means_that_nothing_can_be_set(self):
        self.start_plant(writes=False)
        self.play("writes.read_only_means_that_nothing_can_be_set")

    def test_a_page_of_a_variable_has_its_trend_and_the_device_s_data(self):
        self.start_plant()
        self.play("writes.a_page_of_a_variable_has_its_trend_and_the_device_s_data")

    def test_a_graph_follows_the_values_after_another_theme(self):
        self.start_plant()
        self.play("writes.a_graph_follows_the_values_after_another_theme")

    def test_a_week_is_shown_with_its_values_and_what_is_in_force(self):
        self.start_plant()
        self.play("schedules.a_week_is_shown_with_its_values_and_what_is_in_force")

    def test_a_week_is_edited_with_the_mouse(self):
        self.start_plant()
        self.play("schedules.a_week_is_edited_with_the_mouse")

    def test_a_week_is_edited_with_the_keyboard(self):
        self.start_plant()
        self.play("schedules.a_week_is_edited_with_the_keyboard")

    def test_exceptions_are_words_and_days_of_the_year(self):
        self.start_plant()
        self.play("schedules.exceptions_are_words_and_days_of_the_year")

    def test_an_exception_is_added(self):
        self.start_plant()
        self.play("schedules.an_exception_is_added")

    def test_a_change_by_somebody_else_is_seen_before_a_write(self):
        self.start_plant()
        self.play("schedules.a_change_by_somebody_else_is_seen_before_a_write")

    def test_a_loss_is_said_before_it_is_written(self):
        self.start_plant()
        self.play("schedules.a_loss_is_said_before_it_is_written")

    def test_a_schedule_is_read_only_without_writes(self):
        self.start_plant(writes=False)
        self.play("schedules.a_schedule_is_read_only_without_writes")

    def test_axe_finds_nothing_in_the_light(self):
        self.start_plant()
        self.play("access.axe_finds_nothing_in_the_light")

    def test_axe_finds_nothing_in_the_dark(self):
        self.start_plant()
        self.play("access.axe_finds_nothing_in_the_dark")

    def test_nothing_needs_a_mouse(self):
        self.start_plant()
        self.play("access.nothing_needs_a_mouse")

    def test_a_phone_shows_everything_without_scrolling_sideways(self):
        self.start_plant()
        self.play("access.a_phone_shows_everything_without_scrolling_sideways")


class PagePictures(Scenarios):
    def test_the_pictures_of_the_documents_can_be_taken(self):
        """With DORVEL_WRITE_PICTURES=1 they replace those in docs/pictures, after two minutes of trends."""
        is_written = "DORVEL_WRITE_PICTURES" in os.environ
        folder = os.path.join(ROOT, "docs", "pictures") if is_written else self.file("pictures")
        day = "06000000,4,9,21.500000,20000000,4,9,17.000000"
        values = ("Supply air setpoint=22", "Heating valve=150", f"Setpoint programme={day};{day};{day};{day};{day};;;")
        settings = [word for value in values for word in ("--set", f"AHU.{value}")]
        self.start(os.path.join(ROOT, "examples", "plant.lua"), *settings, devices=[
            (name, os.path.join(ROOT, "examples", "devices", f"{device}.lua")) for name, device in PLANT.items()])
        self.play("pictures.are_taken", longest=600 if is_written else LONGEST, PAGE_PICTURES=folder,
                  PAGE_RUN_SECONDS="130" if is_written else "3")
        for name in os.listdir(folder):
            self.assertLess(os.path.getsize(os.path.join(folder, name)), 200 * 1024, name)
            with self.subTest(name):
                self.assertTrue(os.path.exists(os.path.join(ROOT, "docs", "pictures", name)), "DORVEL_WRITE_PICTURES=1 writes it")


class PageOfTheDemo(Demo):
    def test_the_demo_prints_a_link_and_ends_with_an_interrupt(self):
        demo = self.start("--page")
        link = None
        while not link:
            line = demo.stderr.readline()
            self.assertTrue(line, "the demo has ended")
            link = re.search(r"http://\S+\?token=\S+", line)
        browser = urllib.request.build_opener(urllib.request.HTTPCookieProcessor())
        with browser.open(link[0], timeout=LONGEST) as page:
            self.assertIn(b"<title>", page.read())
        with browser.open(link[0].split("?")[0] + "api/plant", timeout=LONGEST) as plant:
            self.assertEqual(len(json.load(plant)["blocks"]), 4)
        os.killpg(demo.pid, signal.SIGINT)
        output, errors = demo.communicate(timeout=LONGEST)
        self.assertEqual(demo.returncode, 0, output + errors)
        self.assert_nothing_is_left()
