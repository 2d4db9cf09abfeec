"""A host's way to the library: installed into an empty prefix, found by CMake, compiled against and
run, with nothing of the source tree but the example itself."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["BRISEL_BUILD"])
CMAKE = os.environ.get("CMAKE", "cmake")
WITH_QT = os.environ["BRISEL_WITH_QT"] == "ON"
FLAGS = os.environ["BRISEL_CXX_FLAGS"]  # of the sanitizers that the libraries were built with

# Core alone, by a program that does not know of CMake's packages, and by one that does.
CORE = r"""
#include <brisel/Core.h>
#include <cstdio>
int main() {
  using namespace brisel;
  platform::ComponentRegistry registry(platform::make<component::AutomaticShell>());
  component::registerSuite(registry);
  auto window = registry.create<component::DiagramWindow>("BriselCLS.DiagramWindow");
  auto model = registry.create<platform::MetaRepository>("BriselCLS.Meta");
  model->Init();
  window->Create("core", nullptr);
  window->Repository(model.get());
  window->Populate();
  window->CreateClass("a", "A", "", "", "", "");
  try {
    window->call("createNode", {"b"});
  } catch (const platform::CallError& error) {
    std::puts(error.what());
  }
  std::printf("%d %s\n", static_cast<int>(window->getAllNodes()->Count()),
              registry.installationFolder().c_str());
}
"""
CORE_PROJECT = """
cmake_minimum_required(VERSION 3.25)
project(CoreHost LANGUAGES CXX)
set(CMAKE_DISABLE_FIND_PACKAGE_Qt6 ON)
find_package(Brisel 0.1.0 REQUIRED {components})
add_executable(core core.cpp)
target_link_libraries(core PRIVATE Brisel::Core)
"""


def run(*command, **options):
    done = subprocess.run([str(part) for part in command], capture_output=True, check=False,
                          text=True, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command}\n{done.stdout}\n{done.stderr}")
    return done.stdout


class Host(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        first = pathlib.Path(cls.folder.name) / "installed"
        run(CMAKE, "--install", BUILD, "--prefix", first)
        # Everything is found relative to the libraries, wherever they have come to.
        cls.prefix = pathlib.Path(cls.folder.name) / "moved here"
        first.rename(cls.prefix)
        cls.environment = dict(os.environ, QT_QPA_PLATFORM="offscreen",
                               XDG_RUNTIME_DIR=cls.folder.name)

    def library(self, name):
        return next(self.prefix.glob(f"lib*/**/libbrisel-{name}.so"))

    def build(self, source, name):
        build = pathlib.Path(self.folder.name) / name
        run(CMAKE, "-S", source, "-B", build, "-G", "Ninja",
            f"-DCMAKE_PREFIX_PATH={self.prefix}", "-DCMAKE_BUILD_TYPE=Debug",
            "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wshadow -Wconversion -Werror "
            "-Wno-maybe-uninitialized -Wno-restrict " + FLAGS)
        run(CMAKE, "--build", build)
        return build

    def core_project(self, components):
        source = pathlib.Path(tempfile.mkdtemp(dir=self.folder.name))
        (source / "core.cpp").write_text(CORE, encoding="utf-8")
        (source / "CMakeLists.txt").write_text(CORE_PROJECT.format(components=components),
                                               encoding="utf-8")
        return source

    def check_core(self, program, environment=None):
        wrong_count, shown = run(program, env=environment).splitlines()
        self.assertIn("createNode", wrong_count)
        self.assertEqual(shown, f"1 {self.prefix / 'share' / 'brisel'}")
        self.assertTrue((self.prefix / "share" / "brisel" / "Select.bmp").is_file())

    @unittest.skipUnless(WITH_QT, "the widgets need Qt")
    def test_a_host_embeds_the_editor_and_is_asked_for_what_it_has(self):
        build = self.build(ROOT / "examples" / "host", "host")
        told = run(build / "host", "--once", env=self.environment, timeout=60).splitlines()
        self.assertEqual(told, [
            "ClassCreated order", "ClassCreated line", "AssocCreated lines",
            "the window shows 2 classes",
            "ShowHelp UML class diagram.html",
            "HourglassOn", "ClassCreated order", "ClassCreated line", "AssocCreated lines",
            "HourglassOff",
            "the window was closed",
            "GetComponent window", "Deinit", "Destroy", "RemoveComponent window",
            "GetComponent form", "Deinit", "Destroy", "RemoveComponent form",
            "done"])
        picture = xml.etree.ElementTree.fromstring(run(build / "no_window", env={}))
        self.assertIn("OrderLine", "".join(picture.itertext()))
        started = subprocess.Popen([build / "ten_lines"], env=self.environment)
        try:
            with self.assertRaises(subprocess.TimeoutExpired, msg="it has a window to show"):
                started.wait(2)
        finally:
            started.terminate()
            started.wait()

    def test_the_documentation_shows_the_example(self):
        example = "\n".join(file.read_text(encoding="utf-8")
                            for file in sorted((ROOT / "examples" / "host").iterdir()))
        for page, least in (("docs/embedding.md", 6), ("README.md", 1)):
            text = (ROOT / page).read_text(encoding="utf-8")
            shown = re.findall(r"^```(?:cpp|cmake)\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
            self.assertGreaterEqual(len(shown), least)
            for block in shown:
                self.assertTrue(block in example, f"{page} shows what is not there:\n{block}")

    def test_core_needs_no_qt(self):
        for components in ("COMPONENTS Core", ""):
            build = self.build(self.core_project(components), "core" + str(len(components)))
            self.check_core(build / "core")
        needed = run("readelf", "-d", self.library("core"))
        self.assertNotIn("Qt6", needed)

    def test_what_is_not_installed_is_not_found(self):
        for wanted in ("0.1.0 REQUIRED COMPONENTS Plotter", "0.2 REQUIRED", "1.0 REQUIRED"):
            source = self.core_project("")
            project = source / "CMakeLists.txt"
            text = project.read_text(encoding="utf-8").replace("0.1.0 REQUIRED", wanted)
            project.write_text(text, encoding="utf-8")
            with self.assertRaises(AssertionError, msg=wanted):
                self.build(source, "refused")
            shutil.rmtree(pathlib.Path(self.folder.name) / "refused")

    @unittest.skipUnless(shutil.which("pkg-config"), "pkg-config is not installed")
    def test_core_is_known_to_pkg_config(self):
        config = next(self.prefix.glob("lib*/**/brisel-core.pc"))
        environment = dict(os.environ, PKG_CONFIG_PATH=str(config.parent))
        flags = run("pkg-config", "--cflags", "--libs", "brisel-core", env=environment)
        source = self.core_project("")
        run("sh", "-c", f"g++ -std=c++20 {FLAGS} "
                        f"core.cpp {flags.strip()} -o core", cwd=source)
        environment["LD_LIBRARY_PATH"] = str(self.library("core").parent)
        self.check_core(source / "core", environment)

    @unittest.skipIf(FLAGS, "nothing that the sanitizers could see")
    def test_each_header_that_hosts_include_compiles_alone(self):
        """Core.h and Widgets.h, and what they list; other libraries are named by none at all."""
        include = self.prefix / "include"
        listed = {"brisel/Core.h"} | ({"brisel/Widgets.h"} if WITH_QT else set())
        for name in list(listed):
            listed.update(re.findall(r'"(brisel/.*)"', (include / name).read_text("utf-8")))
        self.assertGreater(len(listed), 20)
        folders = os.environ.get("BRISEL_QT_INCLUDES", "").split(":")
        qt = ["-fPIC", *(f"-isystem{folder}" for folder in folders if folder != "/usr/include")]
        for header in include.rglob("*.h"):
            text = header.read_text(encoding="utf-8")
            self.assertNotRegex(text, r"#include <(simdjson|pugixml|CLI|QtSvg|QPrint)")
            self.assertNotRegex(text, r'#include "(?!brisel/)')
        pending = []
        for name in sorted(listed):
            of_qt = "/qt/" in name or name == "brisel/Widgets.h"
            # The keywords of a host's own Qt, which are macros.
            flags = qt if of_qt else ["-Dslots=", "-Demit=", "-Dsignals=public"]
            pending.append((name, subprocess.Popen(
                ["g++", "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Werror", *flags,
                 f"-I{include}", "-include", name, "-x", "c++", os.devnull],
                stderr=subprocess.PIPE, text=True)))
            if len(pending) == 2:
                self.finish(pending)
        self.finish(pending)

    def finish(self, pending):
        for name, compiler in pending:
            self.assertEqual((name, compiler.communicate()[1]), (name, ""))
        pending.clear()

    @unittest.skipIf(FLAGS, "the sanitizers add names of theirs")
    def test_libraries_show_their_own_names_only(self):
        for name in ("core", "widgets") if WITH_QT else ("core",):
            symbols = run("nm", "-DC", "--defined-only", self.library(name))
            foreign = [line for line in symbols.splitlines()
                       if not re.search(r"^[0-9a-f]* ?[A-Za-z] .*brisel::", line)]
            self.assertEqual(foreign, [])


if __name__ == "__main__":
    unittest.main()
