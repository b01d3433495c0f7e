#!/usr/bin/python3
"""A person at another XMPP program, driven by the tests.

Each line on stdin is a JSON object whose "do" names a command, the rest being its arguments. Each line on stdout
is one too: {"event": ...} for what happened to the connection, {"stanza": ...} for what came in, as text.
"""

import asyncio
import json
import sys

import slixmpp


def tell(**line):
    print(json.dumps(line), flush=True)


class Peer(slixmpp.ClientXMPP):
    def __init__(self, jid, password, port, certificate):
        super().__init__(jid, password)
        self.ca_certs = certificate
        self.roster.auto_authorize = None
        self.roster.auto_subscribe = False
        for plugin in ("xep_0054", "xep_0085"):
            self.register_plugin(plugin)
        self.add_event_handler("session_start", self.session_start)
        for event in ("failed_all_auth", "connection_failed", "disconnected", "ssl_invalid_chain"):
            self.add_event_handler(event, lambda _, name=event: tell(event=name))
        self.add_filter("in", self.print_stanza)
        self.connect(("127.0.0.1", port))

    async def session_start(self, _):
        await self.get_roster()
        self.send_presence()
        tell(event="online")

    @staticmethod
    def print_stanza(stanza):
        if isinstance(stanza, (slixmpp.Message, slixmpp.Presence, slixmpp.Iq)):
            tell(stanza=str(stanza))
        return stanza

    def do_send(self, to, body):
        message = self.make_message(to, body, mtype="chat")
        message["chat_state"] = "active"
        message.send()

    def do_presence(self, to=None, type=None, show=None, status=None):
        self.send_presence(pto=to, ptype=type, pshow=show, pstatus=status)

    async def do_read_card(self, of):
        await self["xep_0054"].get_vcard(of)

    async def do_write_card(self, given, family, nickname, email, phone, country):
        card = self["xep_0054"].make_vcard()
        card["FN"] = f"{given} {family}"
        card["N"]["GIVEN"], card["N"]["FAMILY"] = given, family
        card["NICKNAME"] = nickname
        card["EMAIL"]["USERID"] = email
        card["TEL"]["HOME"], card["TEL"]["NUMBER"] = True, phone
        card["ADR"]["HOME"], card["ADR"]["CTRY"] = True, country
        await self["xep_0054"].publish_vcard(vcard=card)
        tell(event="card written")


async def commands(peer):
    reader = asyncio.StreamReader()
    await asyncio.get_running_loop().connect_read_pipe(lambda: asyncio.StreamReaderProtocol(reader), sys.stdin)
    while line := await reader.readline():
        command = json.loads(line)
        done = getattr(peer, "do_" + command.pop("do"))(**command)
        if asyncio.iscoroutine(done):
            await done
    await peer.disconnect()


def main():
    jid, password, port, certificate = sys.argv[1:]
    peer = Peer(jid, password, int(port), certificate)
    peer.loop.run_until_complete(commands(peer))


if __name__ == "__main__":
    main()
