# The languages that the program speaks, as BCP 47 calls them. For a language of the user that is not among them it speaks the
# first one, which is that of the keys in the sources.
# Each has a catalogue app/translations/tallyfold_LANGUAGE.ts, and perhaps a second one, tallyfold_LANGUAGE_desktop.ts, with what
# this desktop calls things that the keys call by the words of another one.
set(TALLYFOLD_LANGUAGES en)
list(GET TALLYFOLD_LANGUAGES 0 TALLYFOLD_LANGUAGE_OF_KEYS)
