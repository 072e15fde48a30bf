# A recipe for Conan 2, which builds the sources that it lies among: conan create packaging/conan
import os

from conan import ConanFile
from conan.errors import ConanInvalidConfiguration
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy


class Kxqdlgs70(ConanFile):
    name = "kxqdlgs70"
    version = "7.0.0"
    description = "Components that extend the common dialogs of Windows: docked forms, places, placement, vetoes"
    license = "MIT"
    topics = ("windows", "dialogs", "gui")
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False], "tools": [True, False]}
    default_options = {"shared": False, "tools": False}

    def export_sources(self):
        top = os.path.join(self.recipe_folder, "..", "..")
        for pattern in ("CMakeLists.txt", "LICENSE", "*.md", "apps/*", "cmake/*", "designer/*", "docs/*", "examples/*",
                        "packaging/*", "platform/*", "src/*", "support/*"):
            copy(self, pattern, top, self.export_sources_folder)

    def validate(self):
        if self.settings.os != "Windows":
            raise ConanInvalidConfiguration("the dialogs are those of Windows")
        if self.options.shared and self.settings.compiler == "msvc":
            raise ConanInvalidConfiguration("the DLL needs MinGW")
        check_min_cppstd(self, 20)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["KX_INSTALL"] = True
        toolchain.cache_variables["KX_APPS"] = bool(self.options.tools)
        toolchain.cache_variables["KX_TESTS"] = False
        toolchain.cache_variables["KX_EXAMPLES"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()

    def package_info(self):
        # The package's own CMake files have the targets, with the resources that belong to them, and the functions.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = ["lib/cmake/kxqdlgs70"]
