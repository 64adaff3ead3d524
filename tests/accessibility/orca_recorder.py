#!/usr/bin/python3
"""Orca with nobody's voice: everything it would say goes to a descriptor, a JSON pair [kind, text] a line.

Kinds: "say" and "char" (spoken), "key" (the echo of a key), "stop" (what is being spoken is cut).

It is Orca's own start-up with its default settings; only the speech server, which Orca takes as a module, is
this one. Started like this it is no process named "orca", so that it neither minds another Orca of the same
person nor is minded by it.
"""
import json
import os
import sys

from orca import speechserver

DESCRIPTOR = int(os.environ["ORCA_RECORDER_FD"])


def record(kind, text=""):
    os.write(DESCRIPTOR, (json.dumps([kind, text]) + "\n").encode())


class SpeechServer(speechserver.SpeechServer):
    """The names are those that Orca calls."""

    _only = None

    @staticmethod
    def getFactoryName():
        return "recorder"

    @staticmethod
    def getSpeechServers():
        return [SpeechServer.getSpeechServer()]

    @staticmethod
    def getSpeechServer(_info=None):
        if SpeechServer._only is None:
            SpeechServer._only = SpeechServer()
        return SpeechServer._only

    @staticmethod
    def shutdownActiveServers():
        pass

    def getInfo(self):
        return ["recorder", "recorder"]

    def getVoiceFamilies(self):
        return []

    def speak(self, text=None, acss=None, interrupt=True):
        record("say", text)

    def speakCharacter(self, character, acss=None):
        record("char", character)

    def speakKeyEvent(self, event, acss=None):
        record("key", event.getKeyName())

    def sayAll(self, utteranceIterator, progressCallback):
        for context, _ in utteranceIterator:
            record("say", context.utterance)

    def stop(self):
        record("stop")

    def shutdown(self):
        pass

    def reset(self, text=None, acss=None):
        pass


def main():
    from orca import orca, settings
    settings.speechServerFactory = "orca_recorder"
    orca.getSettingsManager().activate(None, {"speechServerFactory": "orca_recorder"})
    return orca.main()


if __name__ == "__main__":
    sys.exit(main())
