"""The rooms of the house: what is broken in each, which tests have to notice, and how many of a hundred they should."""
import dataclasses


@dataclasses.dataclass(frozen=True)
class Room:
    sources: tuple  # Patterns, from the root of the project.
    tests: tuple  # The test programs; those of a room above may hold what one below decides.
    beside: tuple  # Programs that the tests start.
    sample: int
    goal: int  # In percent.


DECIDING = ("AnnotationAppearance", "ButtonAppearance", "ChoiceField", "ContentStream", "CopyVerifier", "CopyWriter",
            "FieldAppearance", "FieldBox", "FieldText", "Geometry", "NumberFormat", "ObjectCopier", "OptionalContent",
            "PageContent", "PageForms", "PageGeometry", "PageTree", "Syntax", "VisibleAnnotations")
READER = ("tallyfold-reader",)

# Headers are left out: they hold little that decides, and one that is broken has all compiled anew that includes it.
ROOMS = {
    "core": Room(("core/*.cpp",), ("tallyfold_core_tests",), READER, 300, 95),
    "pdf": Room(tuple(f"pdf/*/{name}.cpp" for name in DECIDING),
                ("tallyfold_pdf_tests", "tallyfold_core_tests"), READER, 300, 90),
    "files": Room(("files/*.cpp",), ("tallyfold_files_tests", "tallyfold_core_tests"), READER, 50, 90),
    "app": Room(("app/*.cpp",), ("tallyfold_app_tests",), READER, 200, 90),
    "window_support": Room(("window_support/*.cpp",), ("tallyfold_window_support_tests",), (), 50, 90),
    "reader": Room(("reader/*.cpp",), ("tallyfold_reader_tests", "tallyfold_pdf_tests"), READER, 50, 90),
}
