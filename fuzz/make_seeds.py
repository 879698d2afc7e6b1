#!/usr/bin/env python3
"""Writes the seed corpora of the fuzz harnesses: the bodies the test suite sends, each
behind the header bytes its harness reads first."""
import os
import struct
import sys

ROUTER_COMMANDS = [18699, 18731, 18749, 18829, 18843, 18863, 19588, 19606, 19917, 10380,
                   19591, 13451, 0, 1, 19592, 19596, 20000, -1, 0x7fffffff]
REQ = '<?xml version="1.0" encoding="UTF-8"?><Request>%s</Request>'
RSP = '<?xml version="1.0" encoding="UTF-8"?><Response><Result>%d</Result>%s</Response>'

ROUTER = {
    18699: REQ % '<Switch Type="614" Enable="1" Channel="2"/>',
    18731: REQ % ('<Enable>1</Enable><Actor Channel="0" PlanType="17"/>'
                  '<Date Weekday="2"><Plan B="07:30" E="08:00" EventArg="mode:3"/></Date>'),
    18749: REQ % ('<Position>90</Position><Line X1="0.5" Y1="0.1" X2="0.9" Y2="0.1"/>'
                  '<Direction X1="0.5" Y1="0.5" X2="0.5" Y2="0.9"/><Interval>5</Interval>'),
    18829: REQ % '<Type>device_bell</Type><Value>{"Type":1,"CustomRingIndex":2,"Volume":60}</Value>',
    18843: REQ % '<Info Index="3" Type="1" Name="hello" Url="http://example.invalid/v.mp3" CustomVoice="1"/>',
    18863: '{"subserial":"CH0000000001"}',
    19588: REQ % '<Info Channel="1" Type="2"/>',
    19606: '{"operType":2,"channel":3,"videoUrl":["http://a.invalid/1","http://a.invalid/2"]}',
    19917: REQ % '<Enable>1</Enable><Time>30</Time><DevSerial>DB0000000001</DevSerial><Pwd>ABCDEF</Pwd>',
    10380: RSP % (1048585, '<DevInfo><SubSeral>DS1</SubSeral><Domain>d.example</Domain><Status>1</Status>'
                           '<NatIP>1.2.3.4</NatIP><LocalIP>10.0.0.2</LocalIP>'
                           '<Port Type="http" NatPort="8080" LocalPort="80"/></DevInfo>'),
    19591: '{"Result":0}',
}


def write(folder, name, data):
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, name), 'wb') as f:
        f.write(data)


def main(out):
    for cmd, body in ROUTER.items():
        head = bytes([ROUTER_COMMANDS.index(cmd)]) + struct.pack('>I', 7) + b'\x01'
        write(os.path.join(out, 'router'), str(cmd), head + body.encode())
        write(os.path.join(out, 'router'), '%d-broken' % cmd, head + body.encode()[: len(body) // 2])
    write(os.path.join(out, 'answers'), 'mapped', b'\x00' + struct.pack('>I', 1) + ROUTER[10380].encode())
    write(os.path.join(out, 'answers'), 'unbind', b'\x01' + struct.pack('>I', 1) + ROUTER[19591].encode())
    units = ('[{"channel":1,"subserial":"CH1","baseserial":"DS1","newbase":"DS2","pwd":"k"},'
             '{"channel":2,"subserial":"CH2","baseserial":"DS1"}]')
    write(os.path.join(out, 'shadow'), 'two-units', b'\x04\x40' + units.encode())
    write(os.path.join(out, 'shadow'), 'string', b'\x03\x40' + units.encode())
    write(os.path.join(out, 'status'), 'zeros', b'\xff\xff\xff\xff' + bytes(64))
    write(os.path.join(out, 'status'), 'ones', b'\x00\x00\x00\x01' + b'\x01' * 64)


if __name__ == '__main__':
    main(sys.argv[1] if len(sys.argv) > 1 else 'fuzz/seeds')
